#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kirolane::qt {

/// When displays change, Qt and window managers take windows down and put them up again, and the audience's
/// may get the keyboard that way. This gives it back to the window that had it, unless a person has pressed
/// something meanwhile.
class KeyboardKeeper : public QObject {
public:
    KeyboardKeeper();

    /// Displays are changing: who has the keyboard now is to keep it. In a change under way that
    /// is who had it at its begin, unless that one has gone.
    void Begin();
    void GiveBack();
    /// All has settled.
    void End();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool m_changing = false;
    QPointer<QWidget> m_holder;
};

} // namespace kirolane::qt
