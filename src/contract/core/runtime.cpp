#include "contract/core/runtime.h"

#include "contract/window.h"

#include <exception>
#include <utility>

namespace kirolane {

namespace {
Runtime* g_current = nullptr;

/// Sets a flag for the length of a scope.
class Flag {
public:
    explicit Flag(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
    ~Flag() { m_flag = m_before; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& m_flag;
    bool m_before;
};
} // namespace

Runtime::Runtime(WindowSystem& windows, MediaEngine& media, FileSystem& files)
    : m_windows(windows), m_media(media), m_files(files), m_looks(files), m_mailbox(windows) {
    g_current = this;
}

Runtime::~Runtime() {
    m_ended = true;
    m_mailbox.AwaitWorkers();
    m_forms.Clear();
    g_current = nullptr;
}

Runtime& Runtime::Current() {
    return *g_current;
}

bool Runtime::Exists() {
    return g_current != nullptr;
}

bool Runtime::Start(const std::function<void()>& makeFirstWindow, std::string& failure) {
    const Failures::Scope own(m_failures);
    try {
        const Flag delivering(m_delivering);
        makeFirstWindow();
    } catch (const std::exception& e) {
        failure = m_failures.Report("start", e.what());
        return false;
    }
    m_started = true;
    Flush();
    m_windows.RequestIdle();
    return true;
}

int Runtime::Run() {
    return m_ended ? m_status : m_windows.RunLoop();
}

void Runtime::Quit(int status) {
    if (m_ended)
        return;
    m_ended = true;
    m_status = status;
    m_windows.EndLoop(status);
}

void Runtime::Deliver(Window& window, std::string what, std::function<void()> handler) {
    if (m_ended || m_modal || window.Closed())
        return;
    if (Busy()) // the Flush that follows has the loop come for it
        m_putOff.push_back({window.weak_from_this(), std::move(what), std::move(handler)});
    else
        RunGuarded(what, handler);
}

bool Runtime::DeliverNow(const Window& window, const std::string& what,
                         const std::function<void()>& handler) {
    if (m_ended || m_modal || Busy() || window.Closed())
        return false;
    RunGuarded(what, handler);
    return true;
}

void Runtime::RunGuarded(const std::string& what, const std::function<void()>& handler) {
    const Failures::Scope own(m_failures);
    m_failures.BeginHandler();
    LetTimePass();
    m_looks.BeginHandler();
    try {
        const Flag delivering(m_delivering);
        handler();
    } catch (const std::exception& e) {
        m_failures.Report(what, e.what());
    }
    Flush();
}

void Runtime::ReportScreensChanged() {
    m_screensChanged = m_modal;
    if (m_modal)
        return;
    for (const auto& form : m_forms.All()) // what follows may make one
        form->FollowScreens();
    if (!Busy()) // else a Flush follows anyway
        Flush();
}

void Runtime::RunPosted() {
    if ((m_delivering && !m_modal) || m_flushing)
        return; // Flush wakes the loop again for what waits
    m_mailbox.RunCalls();
    if (m_delivering)
        return; // a chooser is up: what was put off waits for the end of the handler that asked
    m_forms.DropDeparted();
    for (auto& putOff : std::exchange(m_putOff, {}))
        if (const auto window = putOff.window.lock())
            Deliver(*window, std::move(putOff.what), std::move(putOff.handler));
}

bool Runtime::RunIdleSlice() {
    if (m_ended || (m_delivering && !m_modal) || m_flushing)
        return false;
    if (!std::exchange(m_mediaPrepared, true))
        m_media.Prepare();
    bool more = false;
    {
        // A chooser runs within a delivery of its own; turns of threads are let through there.
        const Flag delivering(m_delivering);
        m_looks.BeginHandler();
        more = m_scheduler.RunSlice();
    }
    Flush();
    return more;
}

void Runtime::Flush() {
    if (m_flushing)
        return;
    const Flag flushing(m_flushing);
    m_orders.Flush(m_media);
    if (m_started) // nothing is shown before the first window is whole
        m_showing.Flush(m_forms, m_ended);
    const bool departed = m_forms.DepartClosed();
    if (m_scheduler.HasReady())
        m_windows.RequestIdle();
    if (departed || !m_putOff.empty() || m_mailbox.HasCalls())
        m_windows.Wake();
}

Instant Runtime::ReadingTime() {
    if (!m_delivering)
        return m_media.Now();
    if (!m_readingTime)
        m_readingTime = m_media.Now();
    return *m_readingTime;
}

std::string Runtime::ChooseFolder() {
    if (m_modal)
        return {};
    Flush();
    std::string chosen;
    {
        const Flag modal(m_modal);
        chosen = m_windows.ChooseFolder();
    }
    LetTimePass();
    if (m_screensChanged)
        ReportScreensChanged();
    return chosen;
}

} // namespace kirolane
