#include "backends/qt/windowpeer.h"

#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/qtwindows.h"
#include "contract/backend/host.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabBar>
#include <QWindow>

#include <utility>

namespace kirolane::qt {

QtWindowPeer::QtWindowPeer(Window& window, QtWindows& system)
    : m_window(window), m_system(system), m_form(new FormWindow(window, *this)),
      m_placement(window, *m_form) {
    m_placement.onSettledElsewhere = [this] {
        if (m_window.FullScreen())
            host::ReportScreensChanged();
        else
            PlaceChanged();
    };
    MakeControls();
    m_visibility = std::make_unique<Visibility>(m_peers);
    m_system.Add(*this);
}

QtWindowPeer::~QtWindowPeer() {
    m_system.Remove(*this);
    m_visibility.reset();
    m_peers.clear(); // the widgets stay, without controls, until the form goes
    m_form->Detach();
}

void QtWindowPeer::MakeControls() {
    for (const auto& control : m_window.Controls()) {
        auto* seen = dynamic_cast<RectControl*>(control.get());
        auto peer = seen == nullptr ? nullptr : MakeControlPeer(*seen, m_form->Content());
        if (peer == nullptr)
            continue;
        m_byControl.emplace(seen, peer.get());
        m_peers.push_back(std::move(peer));
    }
    if (!m_window.Is(WindowRole::Dialog))
        return; // where all keys are commands
    for (QWidget* widget : m_form->Content().findChildren<QWidget*>())
        if (qobject_cast<QAbstractButton*>(widget) != nullptr ||
            qobject_cast<QComboBox*>(widget) != nullptr || qobject_cast<QTabBar*>(widget) != nullptr)
            widget->setFocusPolicy(Qt::TabFocus);
}

void QtWindowPeer::Update(std::span<RectControl* const> changed, bool windowToo) {
    for (const RectControl* control : changed)
        if (const auto peer = m_byControl.find(control); peer != m_byControl.end())
            peer->second->Update();
    m_visibility->Update();
    if (windowToo)
        UpdateWindow();
    UpdateFocus(windowToo);
}

void QtWindowPeer::UpdateWindow() {
    m_form->ShowTitle(qt::ToText(m_window.Title()));
    m_form->SetBackground(m_window);
    m_form->Commands().Update();
    m_form->SetBarShown(m_window.MenuBarVisible());
    m_system.KeepAboveConsole(*this);
    m_placement.Update();
    m_system.WindowsChanged();
}

void QtWindowPeer::UpdateFocus(bool windowToo) {
    const RectControl* wanted = m_window.FocusControl();
    QWidget* focused = m_form->focusWidget();
    const bool typing = qobject_cast<QLineEdit*>(focused) != nullptr;
    if (wanted == m_focus && typing)
        return; // a person has chosen to type; the logic has asked for nothing new
    if (!windowToo && wanted == m_focus && focused != nullptr && focused->isVisible())
        return;
    m_focus = wanted;
    const auto peer = m_byControl.find(wanted);
    QWidget* target = nullptr;
    if (peer != m_byControl.end() && m_visibility->OnShow(*wanted))
        target = &peer->second->Widget();
    else if (const auto* list = m_visibility->ListOnShow())
        target = &list->Widget(); // the list asked for is on a hidden page, or none was
    if (target != nullptr && target != focused)
        target->setFocus(Qt::OtherFocusReason);
}

void QtWindowPeer::BringToFront(bool withKeyboard) {
    if (!m_form->isVisible())
        return; // its display is gone
    if (m_form->isMinimized())
        m_form->setWindowState(m_form->windowState() & ~Qt::WindowMinimized);
    m_form->raise();
    if (m_window.Is(WindowRole::Console))
        m_system.RaiseCompanions(); // where no window manager keeps them above
    if (withKeyboard)
        m_form->activateWindow();
}

Rect QtWindowPeer::CoveredScreen() const {
    const QRect covered = m_placement.Covered();
    return covered.isNull() ? Rect{} : FromQt(covered);
}

void QtWindowPeer::PlaceChanged() {
    QPoint place;
    if (m_placement.TakeMove(place))
        m_window.ReportMoved(place.x(), place.y());
}

void QtWindowPeer::ActiveChanged(bool active) {
    if (active)
        m_window.ReportActivated();
    else
        m_window.ReportDeactivated();
}

void QtWindowPeer::Restored() {
    m_window.ReportRestored();
}

void QtWindowPeer::CloseRequested() {
    m_window.ReportCloseRequested();
}

void QtWindowPeer::KeyLeft(QKeyEvent& event) {
    if (event.key() == Qt::Key_Escape) {
        m_window.ReportEscape();
        return;
    }
    const auto* list = m_visibility->ListOnShow();
    if (list == nullptr || list->Widget().hasFocus())
        return; // it has had the key
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (std::exchange(m_handsKeyOn, true))
            break; // what the list leaves comes back
        event.accept();
        QCoreApplication::sendEvent(&list->Widget(), &event);
        m_handsKeyOn = false;
        break;
    default:
        break;
    }
}

} // namespace kirolane::qt
