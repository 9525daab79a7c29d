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

    /// What is being handled is a key press that comes of a key held down, and no choice by mouse or by an
    /// assistive tool. Qt on X11 tells such a press by the next event in its queue, and takes it for a press
    /// of its own where that has not come yet.
    [[nodiscard]] bool KeyRepeated() const { return m_inKey && m_repeated; }

    /// Any thread: has the runtime run what was posted.
    void Wake();
    /// Has the runtime run idle slices, one a turn of the loop, until it says that there is no more. They
    /// begin after the first paint, which is not to share the processors with them.
    void RequestIdle();

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void NoteKey(const QEvent& event);
    void BeginIdle();

    std::set<int> m_held;
    bool m_inKey = false;    ///< the event being handled is a key press, or the command that one stands for
    bool m_repeated = false; ///< the newest key press; a key whose release went elsewhere leaves it standing
    int m_releasedKey = 0;   ///< the newest release; one that is part of a repetition has its press's time
    quint64 m_releasedAt = 0;
    std::atomic<bool> m_wakePosted = false;
    int m_idleTimer = 0;
    bool m_idleBegun = false; ///< something has been painted, or was waited for long enough
    bool m_idleAsked = false; ///< since the running slice began
};

} // namespace kirolane::qt
