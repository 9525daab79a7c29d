#include "backends/qt/keyboardkeeper.h"

#include <QApplication>
#include <QEvent>

namespace kirolane::qt {

KeyboardKeeper::KeyboardKeeper() {
    qApp->installEventFilter(this);
}

void KeyboardKeeper::Begin() {
    if (!m_changing || m_holder == nullptr ||
        !m_holder->isVisible()) // else what it has now may come of the change
        m_holder = QApplication::activeWindow();
    m_changing = true;
}

void KeyboardKeeper::GiveBack() {
    const QWidget* active = QApplication::activeWindow();
    if (m_holder != nullptr && m_holder->isVisible() && active != nullptr && active != m_holder &&
        active->isFullScreen())
        m_holder->activateWindow();
}

void KeyboardKeeper::End() {
    m_changing = false;
    m_holder = nullptr;
}

bool KeyboardKeeper::eventFilter(QObject* /*object*/, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // all there is of a key that a command takes
        m_holder = nullptr;
        break;
    default:
        break;
    }
    return false;
}

} // namespace kirolane::qt
