#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

namespace kirolane::qt {

class XLink;
class XPane;

/// Puts the pictures of all players on the screen, from a thread and over a connection of its own: what holds
/// the main thread up does not hold them up.
class Presenter {
public:
    /// The program's one, gone with the last that uses it; null where Qt does not run on X11, and where the
    /// environment's KIROLANE_QT_PAINTS wants it to paint. Main thread.
    static std::shared_ptr<Presenter> Use();
    ~Presenter();
    Presenter(const Presenter&) = delete;
    Presenter& operator=(const Presenter&) = delete;

    /// False at first, and for good where the server cannot be given pictures this way. Any thread.
    [[nodiscard]] bool Works() const { return m_works; }
    /// A pane has something to do. Any thread.
    void Wake() const;

    // For a pane. Main thread, but where it says otherwise.

    void Add(XPane& pane);
    /// Afterwards the thread knows it no more, and its window has gone.
    void Remove(XPane& pane);
    /// The server does not take pictures after all: Qt paints from now on. The thread's.
    void Fail();

private:
    explicit Presenter(std::string display);
    void Run();
    /// All that there is to do. False at the end.
    bool Turn();
    /// And frees it.
    void TakeEvent(xcb_generic_event_t* event);

    const std::string m_display;
    const int m_wake;
    std::atomic<bool> m_works = false;
    std::mutex m_mutex;
    // Under m_mutex.
    std::unique_ptr<XLink> m_x; ///< the connection stays the same once it is there
    std::vector<XPane*> m_panes;
    bool m_quit = false;

    std::thread m_thread;
};

} // namespace kirolane::qt
