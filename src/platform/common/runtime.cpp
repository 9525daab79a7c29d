#include "platform/common/runtime.h"

#include "platform/common/folder_snapshot.h"
#include "platform/movieplayer.h"
#include "platform/window.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>

namespace kirolane {

namespace {
Runtime* g_current = nullptr;

/// Sets a flag for the length of a scope.
class Flag {
public:
    explicit Flag(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Flag() { m_flag = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& m_flag;
};
} // namespace

Runtime::Runtime(WindowSystem& windows, MediaEngine& media, FileSystem& files)
    : m_windows(windows), m_media(media), m_files(files), m_looks(files) {
    g_current = this;
}

Runtime::~Runtime() {
    m_ended = true;
    {
        std::unique_lock lock(m_postMutex);
        m_workerDone.wait(lock, [this] { return m_workers == 0; });
    }
    // Forms may look at each other while they go; the last made goes first.
    while (!m_forms.empty()) {
        auto form = std::move(m_forms.back());
        m_forms.pop_back();
    }
    m_closed.clear();
    m_departed.clear();
    g_current = nullptr;
}

Runtime& Runtime::Current() {
    return *g_current;
}

bool Runtime::Exists() {
    return g_current != nullptr;
}

bool Runtime::Start(const std::function<void()>& makeFirstWindow, std::string& failure) {
    const FileFailureScope own(*this);
    try {
        const Flag delivering(m_delivering);
        makeFirstWindow();
    } catch (const std::exception& e) {
        failure = Describe("start", e.what());
        WriteLine(failure);
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
    if (m_ended || m_modal || window.m_closed)
        return;
    if (m_delivering || m_flushing) // the Flush that follows has the loop come for it
        m_putOff.push_back({window.weak_from_this(), std::move(what), std::move(handler)});
    else
        RunGuarded(what, handler);
}

bool Runtime::DeliverNow(const Window& window, const std::string& what,
                         const std::function<void()>& handler) {
    if (m_ended || m_modal || m_delivering || m_flushing || window.m_closed)
        return false;
    RunGuarded(what, handler);
    return true;
}

void Runtime::ReportScreensChanged() {
    m_screensChanged = m_modal;
    if (m_modal)
        return;
    for (const auto& form : Forms()) // what follows may make one
        form->FollowScreens();
    if (!m_delivering && !m_flushing) // else a Flush follows anyway
        Flush();
}

void Runtime::RunGuarded(const std::string& what, const std::function<void()>& handler) {
    const FileFailureScope own(*this);
    m_saidOnce.clear();
    LetTimePass();
    m_looks.BeginHandler();
    try {
        const Flag delivering(m_delivering);
        handler();
    } catch (const std::exception& e) {
        ReportFailure(what, e.what());
    }
    Flush();
}

std::string Runtime::Describe(const std::string& what, const std::string& cause) {
    std::string line = what + ": " + cause;
    if (!m_fileFailure.empty())
        line += " (" + m_fileFailure + ")";
    return line;
}

void Runtime::ReportFailure(const std::string& what, const std::string& cause) {
    WriteLine(Describe(what, cause));
}

void Runtime::Post(std::function<void()> call) {
    {
        const std::lock_guard lock(m_postMutex);
        m_posted.push_back(std::move(call));
    }
    m_windows.Wake();
}

void Runtime::WorkerStarts() {
    const std::lock_guard lock(m_postMutex);
    ++m_workers;
}

void Runtime::WorkerDone(std::function<void()> call) {
    const std::lock_guard lock(m_postMutex);
    m_posted.push_back(std::move(call));
    --m_workers;
    m_windows.Wake();
    m_workerDone.notify_all();
}

bool Runtime::WorkersUnderWay() {
    const std::lock_guard lock(m_postMutex);
    return m_workers > 0;
}

void Runtime::RunPosted() {
    if ((m_delivering && !m_modal) || m_flushing)
        return; // Flush wakes the loop again for what waits
    std::deque<std::function<void()>> calls;
    {
        const std::lock_guard lock(m_postMutex);
        calls.swap(m_posted);
    }
    for (const auto& call : calls)
        call();
    if (m_delivering)
        return; // a chooser is up: what was put off waits for the end of the handler that asked
    std::exchange(m_departed, {}).clear();
    for (auto& putOff : std::exchange(m_putOff, {}))
        if (const auto window = putOff.window.lock())
            Deliver(*window, std::move(putOff.what), std::move(putOff.handler));
}

bool Runtime::HasPosted() {
    const std::lock_guard lock(m_postMutex);
    return !m_posted.empty();
}

bool Runtime::RunIdleSlice() {
    if (m_ended || (m_delivering && !m_modal) || m_flushing)
        return false;
    if (!std::exchange(m_mediaPrepared, true))
        m_media.Prepare();
    bool more = false;
    {
        // A chooser runs within a delivery of its own; turns of threads are let through there.
        const bool delivering = m_delivering;
        m_delivering = true;
        m_looks.BeginHandler();
        more = m_scheduler.RunSlice();
        m_delivering = delivering;
    }
    Flush();
    return more;
}

void Runtime::Flush() {
    if (m_flushing)
        return;
    const Flag flushing(m_flushing);
    FlushPlayers();
    FlushWindows();
    // A closed window may be where the report came from that is being handled: it goes from the loop.
    std::move(m_closed.begin(), m_closed.end(), std::back_inserter(m_departed));
    m_closed.clear();
    if (m_scheduler.HasReady())
        m_windows.RequestIdle();
    if (HasPosted() || !m_putOff.empty() || !m_departed.empty())
        m_windows.Wake();
}

void Runtime::FlushPlayers() {
    if (m_players.empty())
        return;
    std::vector<EngineOrder> orders;
    orders.reserve(m_players.size());
    for (MoviePlayer* player : m_players) {
        player->m_ordered = false;
        if (player->m_engine == nullptr)
            continue;
        PlayerOrder order;
        order.unload = player->m_movie.IsNil() && player->m_loaded;
        order.running = player->m_running;
        order.seekTo = player->m_seekTo;
        order.rate = player->m_rate;
        order.volume = player->m_volume;
        player->m_seekTo.reset();
        if (order.unload)
            player->m_loaded = false;
        orders.push_back({player->m_engine.get(), order});
    }
    m_players.clear();
    m_media.Apply(orders);
}

void Runtime::FlushWindows() {
    if (!m_started) // nothing is shown before the first window is whole
        return;
    KeepOneWindow();
    HandOverKeyboard();
    const auto marked = std::exchange(m_marked, {});
    for (const auto& weak : marked) {
        const auto window = weak.lock();
        if (window == nullptr)
            continue;
        window->m_marked = false;
        auto changed = std::exchange(window->m_changedControls, {});
        for (RectControl* control : changed)
            control->m_marked = false;
        bool windowToo = std::exchange(window->m_changed, false);
        if (!window->m_shown) {
            if (!window->m_visible)
                continue; // the first showing takes everything as it is then
            window->m_shown = true;
            window->m_peer = m_windows.MakeWindow(*window);
            changed = window->RectControls();
            windowToo = true;
        }
        if (window->m_peer != nullptr)
            window->m_peer->Update(changed, windowToo);
    }
    for (const auto& weak : std::exchange(m_front, {})) {
        const auto window = weak.lock();
        if (window != nullptr && window->m_visible && window->m_peer != nullptr)
            window->m_peer->BringToFront(window->Design().frame != WindowFrame::Palette);
    }
}

bool Runtime::HasKeys(const Window& window) {
    return window.m_visible && window.Design().frame != WindowFrame::Palette &&
           (window.m_peer == nullptr || window.m_peer->HasDisplay());
}

void Runtime::KeepOneWindow() {
    if (m_ended || m_forms.empty())
        return;
    const bool any =
        std::any_of(m_forms.begin(), m_forms.end(), [](const Form& form) { return HasKeys(*form.window); });
    if (!any)
        m_forms.front().window->Show();
}

void Runtime::HandOverKeyboard() {
    bool lost = false;
    for (const auto& form : m_forms)
        lost = lost || (form.window->m_active && !form.window->m_visible);
    for (const auto& window : m_closed)
        lost = lost || window->m_active;
    for (const auto& form : m_forms)
        form.window->m_active = form.window->m_active && form.window->m_visible;
    const bool taken = std::any_of(m_front.begin(), m_front.end(), [](const std::weak_ptr<Window>& weak) {
        const auto window = weak.lock();
        return window != nullptr && window->Design().frame != WindowFrame::Palette;
    });
    if (!lost || taken)
        return;
    for (const auto& form : m_forms) {
        if (HasKeys(*form.window)) {
            OrderFront(*form.window);
            return;
        }
    }
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

Instant Runtime::ReadingTime() {
    if (!m_delivering)
        return m_media.Now();
    if (!m_readingTime)
        m_readingTime = m_media.Now();
    return *m_readingTime;
}

void Runtime::NoteFileFailure(const std::string& path, const std::string& cause) {
    m_fileFailure = path + ": " + cause;
}

void Runtime::WriteLine(std::string_view text) {
    std::string line = "kirolane: ";
    line += text;
    std::replace(line.begin(), line.end(), '\n', ' '); // a name with a line break still makes one line
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

void Runtime::WriteLineOnce(std::string text) {
    if (text == m_saidOnce)
        return;
    WriteLine(text);
    m_saidOnce = std::move(text);
}

std::shared_ptr<Window> Runtime::FindForm(std::type_index type) const {
    for (const auto& form : m_forms)
        if (form.type == type)
            return form.window;
    return nullptr;
}

std::shared_ptr<Window> Runtime::MakeForm(std::type_index type,
                                          const std::function<std::shared_ptr<Window>()>& make) {
    auto window = make();
    // Known before Open runs: its handlers name the form.
    m_forms.push_back({type, window});
    window->Make();
    return window;
}

std::vector<std::shared_ptr<Window>> Runtime::Forms() const {
    std::vector<std::shared_ptr<Window>> windows;
    windows.reserve(m_forms.size());
    for (const auto& form : m_forms)
        windows.push_back(form.window);
    return windows;
}

void Runtime::ForgetForm(const Window& window) {
    const auto it = std::find_if(m_forms.begin(), m_forms.end(),
                                 [&](const Form& form) { return form.window.get() == &window; });
    if (it == m_forms.end())
        return;
    m_closed.push_back(it->window); // its handlers may still be running
    m_forms.erase(it);
}

void Runtime::MarkWindow(Window& window) {
    m_marked.push_back(window.weak_from_this());
}

void Runtime::MarkPlayer(MoviePlayer& player) {
    m_players.push_back(&player);
}

void Runtime::ForgetPlayer(const MoviePlayer& player) {
    std::erase_if(m_players, [&](const MoviePlayer* other) { return other == &player; });
}

void Runtime::OrderFront(Window& window) {
    WithdrawFront(window);
    m_front.push_back(window.weak_from_this());
}

void Runtime::WithdrawFront(const Window& window) {
    std::erase_if(m_front, [&](const std::weak_ptr<Window>& weak) { return weak.lock().get() == &window; });
}

std::shared_ptr<const FolderSnapshot> Runtime::FindSnapshot(std::string_view colonPath) {
    for (auto it = m_scopes.rbegin(); it != m_scopes.rend(); ++it)
        if (const auto scope = it->lock(); scope != nullptr && scope->Snapshot()->ColonPath() == colonPath)
            return scope->Snapshot();
    return nullptr;
}

void Runtime::RegisterScope(const std::shared_ptr<const FolderScope>& scope) {
    std::erase_if(m_scopes, [](const auto& weak) { return weak.expired(); });
    m_scopes.push_back(scope);
}

} // namespace kirolane
