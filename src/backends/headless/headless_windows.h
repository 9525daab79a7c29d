#pragma once

#include "backends/headless/handclock.h"
#include "contract/backend/windowsystem.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kirolane::headless {

/// Windows without a screen, steered by a test. All calls on the main thread but for Wake.
class HeadlessWindows : public WindowSystem {
public:
    explicit HeadlessWindows(HandClock& clock) : m_clock(clock) {}

    // What a test does.

    /// Lets so many milliseconds pass: timers and calls of At fire at their times, movies play, and what they
    /// set going (posted calls, turns of threads) runs between them. Does not wait for workers.
    void Advance(std::int64_t milliseconds);
    /// Runs posted calls and idle slices until there are none; waits for the runtime's workers. False if that
    /// is not reached within 10 s of real time.
    bool RunUntilIdle();
    /// The same without waiting for workers.
    void RunReady();
    /// For an engine that plays in real time: runs what is ready, as it comes, until the condition holds. It
    /// is asked after each wake-up and at least every 10 ms. False if it does not hold within `limit`.
    bool RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);
    /// Has a call made outside any delivery when the clock comes there, such as a report from a control.
    void At(std::int64_t millisecondsFromNow, std::function<void()> call);

    /// At any time; at least one, the main one first. At first 1920 by 1200.
    void SetScreens(std::vector<Rect> screens) { m_screens = std::move(screens); }
    void HoldKey(int code) { m_heldKeys.insert(code); }
    void ReleaseKey(int code) { m_heldKeys.erase(code); }
    /// Prepares the next answer of the folder chooser: a native path, "" for cancelled. `whileUp` runs while
    /// it is up. Answers are given in the order prepared; without one the chooser is cancelled.
    void PrepareFolder(std::string nativePath, std::function<void()> whileUp = {});
    [[nodiscard]] int FoldersAsked() const { return m_foldersAsked; }
    /// The texts of ShowStartFailure.
    [[nodiscard]] const std::vector<std::string>& StartFailures() const { return m_startFailures; }
    /// Readies for another runtime: the loop has not ended and nothing waits.
    void Restart();

    // The desktop in small: with it each window has a peer that keeps a record, and the window that is
    // brought to the front with the keyboard is reported active, the one before it deactivated.

    /// Before the first window is shown.
    void UseDesktop() { m_desktop = true; }
    /// What became of a window's peer; all 0 for one never shown.
    struct Record {
        int updates = 0;                       ///< calls of Update
        int windowUpdates = 0;                 ///< those of the window itself
        bool visible = false;                  ///< at the last Update
        std::vector<std::string> lastControls; ///< names in the last Update
    };
    [[nodiscard]] const Record& RecordOf(const std::string& windowName) { return m_records[windowName]; }
    /// Names of the windows raised, in order, since the last call; " (no keyboard)" follows where it is so.
    std::vector<std::string> TakeRaised() { return std::exchange(m_raised, {}); }
    /// Name of the window that has the keyboard, "" if none.
    [[nodiscard]] std::string ActiveWindow() const;

    // WindowSystem.
    std::unique_ptr<WindowPeer> MakeWindow(Window& window) override;
    std::unique_ptr<TimerPeer> MakeTimer(Timer& timer) override;
    Point DefaultPlace(const Window& window) override;
    [[nodiscard]] std::vector<Rect> Screens() const override { return m_screens; }
    [[nodiscard]] bool KeyDown(int code) const override { return m_heldKeys.contains(code); }
    std::string ChooseFolder() override;
    void ShowStartFailure(const std::string& text) override { m_startFailures.push_back(text); }
    /// Time passes by itself: where nothing is ready, the clock goes to the next call due. -1 if nothing ends
    /// the loop within 10 s of real time.
    int RunLoop() override;
    void EndLoop(int status) override;
    void Wake() override;
    void RequestIdle() override { m_idle = true; }

private:
    friend class RecordingPeer;

    struct FolderAnswer {
        std::string path;
        std::function<void()> whileUp;
    };

    [[nodiscard]] bool TakeWoken();
    void Activate(Window* window);

    HandClock& m_clock;
    std::vector<Rect> m_screens{{0, 0, 1920, 1200}};
    std::set<int> m_heldKeys;
    std::deque<FolderAnswer> m_folderAnswers;
    int m_foldersAsked = 0;
    std::vector<std::string> m_startFailures;

    bool m_desktop = false;
    Window* m_active = nullptr;
    std::map<std::string, Record> m_records;
    std::vector<std::string> m_raised;

    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_woken = false; ///< under m_mutex
    bool m_idle = false;
    bool m_ended = false;
    int m_status = 0;
};

} // namespace kirolane::headless
