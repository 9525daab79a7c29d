#include "backends/headless/headless_windows.h"

#include "contract/backend/host.h"
#include "contract/rectcontrol.h"
#include "contract/timer.h"
#include "contract/window.h"

#include <algorithm>

namespace kirolane::headless {

namespace {

using RealTime = std::chrono::steady_clock;
constexpr auto kPatience = std::chrono::seconds(10);

class HandTimer : public TimerPeer {
public:
    HandTimer(HandClock& clock, Timer& timer)
        : m_clock(clock),
          m_ticket(clock.Add(timer.Period(), timer.Period(), [&timer] { timer.ReportDue(); })) {}
    ~HandTimer() override { m_clock.Remove(m_ticket); }

private:
    HandClock& m_clock;
    HandClock::Ticket m_ticket;
};

} // namespace

class RecordingPeer : public WindowPeer {
public:
    RecordingPeer(HeadlessWindows& windows, Window& window) : m_windows(windows), m_window(window) {}
    ~RecordingPeer() override {
        if (m_windows.m_active == &m_window)
            m_windows.m_active = nullptr;
    }

    void Update(std::span<RectControl* const> changed, bool windowToo) override {
        auto& record = m_windows.m_records[m_window.Name()];
        ++record.updates;
        record.windowUpdates += windowToo ? 1 : 0;
        record.visible = m_window.Visible();
        record.lastControls.clear();
        for (const RectControl* control : changed)
            record.lastControls.push_back(control->Name());
        if (!record.visible && m_windows.m_active == &m_window)
            m_windows.Activate(nullptr);
    }

    void BringToFront(bool withKeyboard) override {
        m_windows.m_raised.push_back(m_window.Name() + (withKeyboard ? "" : " (no keyboard)"));
        if (withKeyboard)
            m_windows.Activate(&m_window);
    }

    /// Begun on the main screen it stays there; else it is the second one's, whichever that is.
    [[nodiscard]] Rect CoveredScreen() const override {
        const auto& screens = m_windows.m_screens;
        if (!m_window.FullScreen() || !m_window.Visible())
            return {};
        return m_onMain ? screens.front() : screens.size() > 1 ? screens[1] : Rect{};
    }
    [[nodiscard]] bool HasDisplay() const override {
        return !m_window.FullScreen() || CoveredScreen() != Rect{};
    }

private:
    HeadlessWindows& m_windows;
    Window& m_window;
    bool m_onMain = m_windows.m_screens.front().Holds({m_window.Left(), m_window.Top()});
};

void HeadlessWindows::Activate(Window* window) {
    if (window == m_active)
        return;
    if (m_active != nullptr)
        m_active->ReportDeactivated();
    m_active = window;
    if (window != nullptr)
        window->ReportActivated();
}

std::string HeadlessWindows::ActiveWindow() const {
    return m_active == nullptr ? std::string() : m_active->Name();
}

bool HeadlessWindows::TakeWoken() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_woken, false);
}

void HeadlessWindows::RunReady() {
    const auto deadline = RealTime::now() + kPatience;
    while (host::Exists() && RealTime::now() < deadline) {
        const bool woken = TakeWoken();
        const bool idle = std::exchange(m_idle, false);
        if (!woken && !idle)
            return;
        if (woken)
            host::RunPosted();
        if (idle && host::RunIdleSlice())
            m_idle = true;
    }
}

bool HeadlessWindows::RunUntilIdle() {
    const auto deadline = RealTime::now() + kPatience;
    while (host::Exists()) {
        RunReady();
        // Asked before looking for a wake-up: a worker that is done has woken the loop already.
        const bool workers = host::WorkersUnderWay();
        std::unique_lock lock(m_mutex);
        if (!workers && !m_woken && !m_idle)
            return true;
        if (!m_idle && !m_wakeUp.wait_until(lock, deadline, [this] { return m_woken; }))
            return false;
        if (RealTime::now() >= deadline)
            return false;
    }
    return true;
}

bool HeadlessWindows::RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const auto deadline = RealTime::now() + limit;
    for (;;) {
        RunReady();
        if (condition())
            return true;
        if (RealTime::now() >= deadline)
            return false;
        std::unique_lock lock(m_mutex);
        m_wakeUp.wait_for(lock, std::chrono::milliseconds(10), [this] { return m_woken; });
    }
}

void HeadlessWindows::Advance(std::int64_t milliseconds) {
    const std::int64_t until = m_clock.Now() + milliseconds;
    RunReady();
    while (!m_ended && m_clock.Step(until))
        RunReady();
    m_clock.MoveTo(until);
    RunReady();
}

void HeadlessWindows::At(std::int64_t millisecondsFromNow, std::function<void()> call) {
    m_clock.Add(millisecondsFromNow, 0, std::move(call));
}

void HeadlessWindows::PrepareFolder(std::string nativePath, std::function<void()> whileUp) {
    m_folderAnswers.push_back({std::move(nativePath), std::move(whileUp)});
}

std::unique_ptr<WindowPeer> HeadlessWindows::MakeWindow(Window& window) {
    return m_desktop ? std::make_unique<RecordingPeer>(*this, window) : nullptr;
}

std::unique_ptr<TimerPeer> HeadlessWindows::MakeTimer(Timer& timer) {
    return std::make_unique<HandTimer>(m_clock, timer);
}

Point HeadlessWindows::DefaultPlace(const Window& window) {
    const Rect& screen = m_screens.front();
    Point place{screen.left, screen.top};
    const auto console = host::Console();
    if (window.Is(WindowRole::Palette) && console != nullptr)
        place.left += console->Width();
    return place;
}

std::string HeadlessWindows::ChooseFolder() {
    ++m_foldersAsked;
    if (m_folderAnswers.empty())
        return {};
    const FolderAnswer answer = std::move(m_folderAnswers.front());
    m_folderAnswers.pop_front();
    if (answer.whileUp)
        answer.whileUp();
    RunReady();
    return answer.path;
}

int HeadlessWindows::RunLoop() {
    const auto deadline = RealTime::now() + kPatience;
    while (!m_ended && RunUntilIdle() && RealTime::now() < deadline) {
        std::int64_t due = 0;
        if (m_ended || !m_clock.NextDue(due))
            break;
        m_clock.Step(due);
    }
    return m_ended ? m_status : -1;
}

void HeadlessWindows::EndLoop(int status) {
    m_ended = true;
    m_status = status;
}

void HeadlessWindows::Restart() {
    m_ended = false;
    m_idle = false;
    const std::lock_guard lock(m_mutex);
    m_woken = false;
}

void HeadlessWindows::Wake() {
    {
        const std::lock_guard lock(m_mutex);
        m_woken = true;
    }
    m_wakeUp.notify_all();
}

} // namespace kirolane::headless
