#pragma once

#include "platform/backend/filesystem.h"
#include "platform/backend/mediaengine.h"
#include "platform/backend/windowsystem.h"
#include "platform/common/lookout.h"
#include "platform/common/scheduler.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>
#include <vector>

namespace kirolane {

class Application;
class FolderScope;
class FolderSnapshot;
class MoviePlayer;
class Window;

/// The one place where the outside meets the contract objects: deliveries, their net effect, implicit
/// instances, threads. There is one at a time; a test makes its own. Main thread only, but for Post.
///
/// A delivery is one event handler run from the outside. What it orders reaches the back ends when it ends:
/// players first, all together, then windows. A failure in it is written to standard error and abandons the
/// handler. What a back end reports while a delivery or a showing is under way waits for its end.
class Runtime {
public:
    Runtime(WindowSystem& windows, MediaEngine& media, FileSystem& files);
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    static Runtime& Current();
    static bool Exists();

    [[nodiscard]] WindowSystem& Windows() const { return m_windows; }
    [[nodiscard]] MediaEngine& Media() const { return m_media; }
    [[nodiscard]] FileSystem& Files() const { return m_files; }
    [[nodiscard]] Scheduler& Threads() { return m_scheduler; }
    /// For looks at files that may lie anywhere; Files for those in the home folder, and for workers.
    [[nodiscard]] Lookout& Looks() { return m_looks; }

    /// Runs the making of the first window. False if it failed: one line has then gone to standard error, and
    /// `failure` holds it.
    bool Start(const std::function<void()>& makeFirstWindow, std::string& failure);
    /// The event loop; the exit status given to Quit.
    int Run();
    void Quit(int status);
    [[nodiscard]] bool Ended() const { return m_ended; }

    /// Runs a handler of that window or of a control in it as one delivery. `what` names it in failures
    /// ("Mainform.QTM_PosBar ValueChanged"). Dropped if the window is closed, while the folder chooser is up
    /// and after Quit; put off while a delivery is under way.
    void Deliver(Window& window, std::string what, std::function<void()> handler);
    /// The same for a handler whose answer is needed now. False, without a call, where it would be dropped or
    /// put off.
    bool DeliverNow(const Window& window, const std::string& what, const std::function<void()>& handler);

    /// The back end: displays came, went or changed. Each window follows (Window::FollowScreens), and where
    /// none is left to be seen the console comes, so that nobody is left without keys. Waits for the end of a
    /// folder chooser that is up.
    void ReportScreensChanged();

    /// Any thread: runs the call on the main thread, outside any delivery.
    void Post(std::function<void()> call);
    /// A worker of the platform's own begins. The runtime's end waits for those under way.
    void WorkerStarts();
    /// Worker: it is done, and `call` is to be run on the main thread. The worker's last use of the runtime.
    void WorkerDone(std::function<void()> call);
    [[nodiscard]] bool WorkersUnderWay();
    /// The back end's answer to WindowSystem::Wake.
    void RunPosted();
    /// One slice of idle work: turns of the ready threads, then their net effect. True if there is more.
    bool RunIdleSlice();
    /// Brings the back ends up to date with the contract objects.
    void Flush();

    /// As of when players are read: now. A handler, and a turn of a thread, keeps the instant of its first
    /// reading until it yields, loads or asks for a folder.
    [[nodiscard]] Instant ReadingTime();
    void LetTimePass() { m_readingTime.reset(); }

    /// The folder chooser; "" if cancelled.
    std::string ChooseFolder();
    [[nodiscard]] bool Modal() const { return m_modal; }

    /// Remembers the newest failure of a file call, for the line that a failure of the running handler
    /// writes.
    void NoteFileFailure(const std::string& path, const std::string& cause);
    /// A handler or a turn of a thread: its failures are its own, and those noted before stand again after
    /// it.
    class FileFailureScope {
    public:
        explicit FileFailureScope(Runtime& runtime)
            : m_runtime(runtime), m_before(std::exchange(runtime.m_fileFailure, {})) {}
        ~FileFailureScope() { m_runtime.m_fileFailure = std::move(m_before); }
        FileFailureScope(const FileFailureScope&) = delete;
        FileFailureScope& operator=(const FileFailureScope&) = delete;

    private:
        Runtime& m_runtime;
        std::string m_before;
    };
    /// Writes the failure of a handler or thread: its name, the exception, the file concerned if one is
    /// known.
    void ReportFailure(const std::string& what, const std::string& cause);
    /// One line on standard error: "kirolane: " and the text.
    static void WriteLine(std::string_view text);
    /// The same, unless the running handler's newest such line was this one: twins open one file twice.
    void WriteLineOnce(std::string text);

    std::shared_ptr<Window> FindForm(std::type_index type) const;
    std::shared_ptr<Window> MakeForm(std::type_index type,
                                     const std::function<std::shared_ptr<Window>()>& make);
    /// Forms that are open, in the order of their making. The first is the console.
    [[nodiscard]] std::vector<std::shared_ptr<Window>> Forms() const;
    void ForgetForm(const Window& window);

    // Orders of the contract objects, carried out by the next Flush.
    void MarkWindow(Window& window);
    void MarkPlayer(MoviePlayer& player);
    void ForgetPlayer(const MoviePlayer& player);
    void OrderFront(Window& window);
    void WithdrawFront(const Window& window);

    /// Readings of folders that are alive, newest last (see FolderReading).
    [[nodiscard]] std::shared_ptr<const FolderSnapshot> FindSnapshot(std::string_view colonPath);
    void RegisterScope(const std::shared_ptr<const FolderScope>& scope);

    void SetApplication(Application* application) { m_application = application; }
    [[nodiscard]] Application* App() const { return m_application; }

private:
    struct Form {
        std::type_index type;
        std::shared_ptr<Window> window;
    };
    struct PutOff {
        std::weak_ptr<Window> window;
        std::string what;
        std::function<void()> handler;
    };

    void RunGuarded(const std::string& what, const std::function<void()>& handler);
    [[nodiscard]] std::string Describe(const std::string& what, const std::string& cause);
    [[nodiscard]] bool HasPosted();
    void FlushPlayers();
    void FlushWindows();
    /// It can be seen, and commands can be given in it.
    static bool HasKeys(const Window& window);
    void KeepOneWindow();
    void HandOverKeyboard();

    WindowSystem& m_windows;
    MediaEngine& m_media;
    FileSystem& m_files;
    Application* m_application = nullptr;
    Scheduler m_scheduler;
    Lookout m_looks;

    std::vector<Form> m_forms;
    std::vector<std::shared_ptr<Window>> m_closed;   ///< since the last showing
    std::vector<std::shared_ptr<Window>> m_departed; ///< kept until no handler of theirs can be running
    std::deque<PutOff> m_putOff;
    std::vector<std::weak_ptr<Window>> m_marked;
    std::vector<std::weak_ptr<Window>> m_front; ///< in the order of their Show
    std::vector<MoviePlayer*> m_players;
    std::vector<std::weak_ptr<const FolderScope>> m_scopes;

    std::mutex m_postMutex;
    std::deque<std::function<void()>> m_posted;
    std::condition_variable m_workerDone;
    int m_workers = 0; ///< under m_postMutex

    std::optional<Instant> m_readingTime;

    std::string m_fileFailure;
    std::string m_saidOnce; ///< by the running handler
    bool m_started = false;
    bool m_mediaPrepared = false;
    bool m_delivering = false;
    bool m_flushing = false;
    bool m_modal = false;
    bool m_screensChanged = false; ///< while modal
    bool m_ended = false;
    int m_status = 0;
};

} // namespace kirolane
