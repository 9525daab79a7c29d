#include "backends/qt/placement.h"

#include "backends/qt/screens.h"
#include "backends/qt/x11.h"

#include <QGuiApplication>
#include <QScreen>

#include <chrono>

namespace kirolane::qt {

namespace {

/// Window managers answer an order within a few milliseconds, in steps that are no moves of anybody's.
constexpr std::chrono::milliseconds kSettleTime{250};
constexpr int kMaxCorrections = 2;

} // namespace

Placement::Placement(const Window& window, FormWindow& form) : m_window(window), m_form(form) {
    m_settling.setSingleShot(true);
    m_settling.setInterval(kSettleTime);
    m_settling.callOnTimeout(this, [this] { Settle(); });
}

void Placement::Update() {
    if (!m_window.FullScreen()) {
        m_screenName.clear();
        m_covered = QRect();
    }
    if (!m_window.Visible())
        m_form.hide();
    else if (m_window.FullScreen())
        Cover();
    else
        UpdateFree();
}

void Placement::UpdateFree() {
    const QPoint place(m_window.Left(), m_window.Top());
    const int bar = m_form.BarHeight();
    const QSize size(m_window.Width(), m_window.Height() + bar);
    if (m_form.isFullScreen())
        m_form.setWindowState(Qt::WindowNoState);
    m_form.setFixedSize(size);
    // A place that the window itself reported is no order: by now it may be further on.
    const bool written = place != m_seen && place != m_reported;
    m_seen = place;
    if (!m_form.isVisible() || written || size != m_client.size())
        Order(QRect(place - QPoint(0, bar), size));
    m_form.show();
}

void Placement::Order(const QRect& client) {
    m_client = client;
    m_reported = client.topLeft() + QPoint(0, m_form.BarHeight());
    m_corrections = 0;
    m_form.setGeometry(client);
    m_settling.start();
}

void Placement::Settle() {
    if (!m_form.isVisible() || m_form.isMinimized())
        return;
    if (m_window.FullScreen()) {
        if (m_covered.isNull())
            return;
        if (m_form.geometry() == m_covered) {
            if (m_insisted && onSettledElsewhere)
                onSettledElsewhere(); // it has come back to its display
            m_insisted = false;
            return;
        }
        if (m_corrections == kMaxCorrections) {
            // The window manager may know better: the picture fills what is.
            m_covered = m_form.geometry();
            m_insisted = true;
            if (onSettledElsewhere)
                onSettledElsewhere();
            return;
        }
        const int corrections = m_corrections + 1;
        m_covered = QRect();
        Cover();
        m_corrections = corrections;
        return;
    }
    const QPoint missed = m_client.topLeft() - m_form.geometry().topLeft();
    if (!missed.isNull() && m_corrections == 0) { // the frame's margins are known only now
        ++m_corrections;
        m_form.move(m_form.pos() + missed);
        m_settling.start();
        return;
    }
    if (!missed.isNull() && onSettledElsewhere)
        onSettledElsewhere();
}

bool Placement::TakeMove(QPoint& place) {
    if (!m_form.isVisible() || m_form.isMinimized())
        return false;
    if (m_window.FullScreen()) {
        if (!m_settling.isActive() && !m_covered.isNull() && m_form.geometry() != m_covered) {
            m_corrections = 0;
            m_settling.start(); // whatever moved it is given time to finish
        }
        return false;
    }
    place = m_form.ContentPlace();
    if (m_settling.isActive() || place == QPoint(m_window.Left(), m_window.Top()))
        return false;
    m_client.moveTopLeft(m_form.geometry().topLeft());
    m_reported = place;
    return true;
}

/// Once a display has been covered it is known by its connector. Gone, its place may be taken by one that was
/// not there beside it: the same projector on another connector, or another projector.
QScreen* Placement::Target() const {
    QScreen* primary = QGuiApplication::primaryScreen();
    if (m_screenName.isEmpty()) {
        QScreen* holding = QGuiApplication::screenAt({m_window.Left(), m_window.Top()});
        return holding == nullptr ? primary : holding;
    }
    if (QScreen* screen = ScreenNamed(m_screenName); screen != nullptr || m_onMain)
        return screen != nullptr ? screen : primary;
    QScreen* successor = nullptr;
    for (QScreen* screen : QGuiApplication::screens()) {
        const bool mirror = primary != nullptr && screen->geometry() == primary->geometry();
        if (mirror || m_besides.contains(screen->name()))
            continue;
        if (successor == nullptr || screen->geometry() == m_lastCovered)
            successor = screen;
    }
    return successor;
}

void Placement::Remember(QScreen& screen) {
    if (m_screenName.isEmpty())
        m_onMain = &screen == QGuiApplication::primaryScreen();
    m_screenName = screen.name();
    m_lastCovered = screen.geometry();
    m_besides.clear();
    for (const QScreen* other : QGuiApplication::screens())
        if (other != &screen)
            m_besides.append(other->name());
}

void Placement::Cover() {
    QScreen* screen = Target();
    if (screen == nullptr) { // its display is gone: on another it would stand in the operator's way
        m_covered = QRect();
        m_form.hide();
        return;
    }
    Remember(*screen);
    if (m_form.isVisible() && m_covered == screen->geometry())
        return;
    m_covered = screen->geometry();
    m_corrections = 0;
    if (!m_form.isFullScreen())
        m_form.hide(); // it changes its kind, not only its display
    m_form.setMinimumSize(0, 0);
    m_form.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    // Covering one display it does not change to another; hidden meanwhile it would lose the keyboard.
    m_form.setWindowState(Qt::WindowNoState);
    m_form.setScreen(screen);
    m_form.setGeometry(m_covered);
    m_form.setWindowState(Qt::WindowFullScreen);
    m_form.show(); // showFullScreen would take the keyboard
    X11ShowOnAllDesktops(m_form.winId());
    m_settling.start();
}

void Placement::ScreensChanged() {
    if (m_window.Visible() && m_window.FullScreen())
        Cover();
}

bool Placement::HasDisplay() const {
    return !m_window.FullScreen() || Target() != nullptr;
}

} // namespace kirolane::qt
