#pragma once

#include <QApplication>

#include <atomic>
#include <set>

namespace kirolane::qt {

/// The application object. A failure that leaves a Qt handler is written to standard error and ends nothing:
/// the loop goes on with the next event.
class ShowApplication : public QApplication {
public:
    ShowApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

    /// The key is held now, as far as its events have come to one of the program's windows. All keys count as
    /// released while no window has the keyboard.
    [[nodiscard]] bool KeyHeld(Qt::Key key) const { return m_held.contains(key); }

    /// Any thread: has the runtime run what was posted.
    void Wake();
    /// Has the runtime run idle slices, one a turn of the loop, until it says that there is no more.
    void RequestIdle();

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void NoteKey(const QEvent& event);

    std::set<int> m_held;
    std::atomic<bool> m_wakePosted = false;
    int m_idleTimer = 0;
    bool m_idleAsked = false; ///< since the running slice began
};

} // namespace kirolane::qt
