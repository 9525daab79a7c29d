#pragma once

#include "contract/geometry.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace kirolane {

class RectControl;
class Timer;
class Window;

/// What stands on the screen for one Window and its controls. It decides nothing and remembers nothing: told
/// of a change it re-reads the contract objects, and it reports what a person did to them.
class WindowPeer {
public:
    virtual ~WindowPeer() = default;

    /// Shows what these controls and, if `windowToo`, the window itself hold now.
    virtual void Update(std::span<RectControl* const> changed, bool windowToo) = 0;
    /// Raises the window above the program's others, and gives it the keyboard if so told.
    virtual void BringToFront(bool withKeyboard) = 0;
    /// False while the display that a full-screen window covers is gone: then it is not seen, whatever it
    /// holds.
    [[nodiscard]] virtual bool HasDisplay() const { return true; }
    /// The display that a full-screen window covers; all 0 while it covers none.
    [[nodiscard]] virtual Rect CoveredScreen() const { return {}; }
};

/// A running clock of a Timer; destroying it stops it.
class TimerPeer {
public:
    virtual ~TimerPeer() = default;
};

/// The windowing back end: windows, screens, keyboard, folder chooser, event loop.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Called at the window's first showing, when all its controls exist; followed by an Update of
    /// everything. Null is a valid peer: the window then behaves the same unseen.
    virtual std::unique_ptr<WindowPeer> MakeWindow(Window& window) = 0;
    /// Calls timer.ReportDue() about every Period on the main thread, from a steady clock.
    virtual std::unique_ptr<TimerPeer> MakeTimer(Timer& timer) = 0;
    /// Where the content area of a new window starts: the first window at the top left of the main screen's
    /// work area, a palette beside it.
    virtual Point DefaultPlace(const Window& window) = 0;

    /// At least one; the main screen first, then one that a full-screen window covers, the others from left
    /// to right. Mirrored screens come each for itself.
    [[nodiscard]] virtual std::vector<Rect> Screens() const = 0;
    /// Codes as in Keyboard.
    [[nodiscard]] virtual bool KeyDown(int code) const = 0;
    /// Runs the folder dialog to its end. Native path, "" if cancelled. Idle slices go on meanwhile.
    virtual std::string ChooseFolder() = 0;
    /// Shows a failure that ends the start, where there is a desktop to show it on; waits for the answer.
    virtual void ShowStartFailure(const std::string& text) = 0;

    /// Runs the event loop until EndLoop; the exit status. Between events, while RequestIdle stands, it calls
    /// host::RunIdleSlice until that returns false.
    virtual int RunLoop() = 0;
    virtual void EndLoop(int status) = 0;
    /// Any thread: have host::RunPosted called on the main thread soon.
    virtual void Wake() = 0;
    /// Main thread: there is idle work.
    virtual void RequestIdle() = 0;
};

} // namespace kirolane
