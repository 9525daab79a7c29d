#pragma once

#include "backends/qt/keyboardkeeper.h"
#include "contract/backend/windowsystem.h"

#include <memory>
#include <vector>

class QTimer;

namespace kirolane::qt {

class QtWindowPeer;
class ShowApplication;
class SleepInhibitor;
class Words;

/// The windowing back end on Qt Widgets. Make it first of all and let it go last; main thread only.
class QtWindows final : public WindowSystem {
public:
    /// main's own arguments; both must live as long as this object. Where QT_QPA_PLATFORM names no platform,
    /// it is X11, in a Wayland session through Xwayland: elsewhere windows cannot be placed. Without an X11
    /// display the process ends here, with one line.
    QtWindows(int& argc, char** argv);
    ~QtWindows() override;
    QtWindows(const QtWindows&) = delete;
    QtWindows& operator=(const QtWindows&) = delete;

    std::unique_ptr<WindowPeer> MakeWindow(Window& window) override;
    std::unique_ptr<TimerPeer> MakeTimer(Timer& timer) override;
    Point DefaultPlace(const Window& window) override;
    [[nodiscard]] std::vector<Rect> Screens() const override;
    [[nodiscard]] bool KeyDown(int code) const override;
    std::string ChooseFolder() override;
    void ShowStartFailure(const std::string& text) override;
    int RunLoop() override;
    void EndLoop(int status) override;
    void Wake() override;
    void RequestIdle() override;

    // For the window peers.

    void Add(QtWindowPeer& peer);
    void Remove(QtWindowPeer& peer);
    /// Has the window manager keep preferences and palettes above the console.
    void KeepAboveConsole(QtWindowPeer& peer);
    void RaiseCompanions();
    /// A window came up, went or changed its frame's state.
    void WindowsChanged();

private:
    [[nodiscard]] QtWindowPeer* Console() const;
    void WatchScreens();
    void ScreensChanged();
    void FollowScreens();

    std::unique_ptr<ShowApplication> m_application;
    std::unique_ptr<Words> m_words;
    std::unique_ptr<SleepInhibitor> m_inhibitor;
    std::unique_ptr<QTimer> m_screensChange; ///< runs out a turn after the displays have changed
    std::unique_ptr<QTimer> m_secondLook;    ///< runs out when the window manager has followed, too
    std::unique_ptr<KeyboardKeeper> m_keyboard;
    std::vector<QtWindowPeer*> m_peers;
    std::string m_lastFolder; ///< where the next folder dialog starts
};

} // namespace kirolane::qt
