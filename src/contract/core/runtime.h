#pragma once

#include "contract/backend/filesystem.h"
#include "contract/backend/mediaengine.h"
#include "contract/backend/windowsystem.h"
#include "contract/core/failures.h"
#include "contract/core/folder_readings.h"
#include "contract/core/forms.h"
#include "contract/core/lookout.h"
#include "contract/core/mailbox.h"
#include "contract/core/player_orders.h"
#include "contract/core/scheduler.h"
#include "contract/core/showing.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kirolane {

class Application;
class Window;

/// Where the outside meets the contract objects: deliveries and their net effect, on the back ends given.
/// There is one at a time; a test makes its own. Main thread only, but for the mailbox.
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
    /// For files in the home folder, and for workers; Looks for those that may lie anywhere.
    [[nodiscard]] FileSystem& Files() const { return m_files; }
    [[nodiscard]] Lookout& Looks() { return m_looks; }
    [[nodiscard]] Scheduler& Threads() { return m_scheduler; }
    [[nodiscard]] Mailbox& Mail() { return m_mailbox; }
    [[nodiscard]] kirolane::Forms& Forms() { return m_forms; }
    [[nodiscard]] kirolane::Failures& Failures() { return m_failures; }
    [[nodiscard]] FolderReadings& Readings() { return m_readings; }
    /// Orders of the contract objects, carried out by the next Flush.
    [[nodiscard]] kirolane::Showing& Showing() { return m_showing; }
    [[nodiscard]] PlayerOrders& Orders() { return m_orders; }

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

    // What the loop of the back end calls; contract/backend/host.h says what each is for.
    void ReportScreensChanged();
    void RunPosted();
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

    void SetApplication(Application* application) { m_application = application; }
    [[nodiscard]] Application* App() const { return m_application; }

private:
    struct PutOff {
        std::weak_ptr<Window> window;
        std::string what;
        std::function<void()> handler;
    };

    /// A delivery or a showing is under way: what comes from outside waits.
    [[nodiscard]] bool Busy() const { return m_delivering || m_flushing; }
    void RunGuarded(const std::string& what, const std::function<void()>& handler);

    WindowSystem& m_windows;
    MediaEngine& m_media;
    FileSystem& m_files;
    Application* m_application = nullptr;
    Scheduler m_scheduler;
    Lookout m_looks;
    Mailbox m_mailbox;
    FolderReadings m_readings;
    kirolane::Failures m_failures;
    kirolane::Showing m_showing;
    PlayerOrders m_orders;
    kirolane::Forms m_forms; ///< last: the forms use all of the above while they go

    std::deque<PutOff> m_putOff;
    std::optional<Instant> m_readingTime;
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
