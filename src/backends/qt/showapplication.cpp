#include "backends/qt/showapplication.h"

#include "contract/backend/host.h"

#include <QKeyEvent>
#include <QTimerEvent>

#include <exception>
#include <string>
#include <utility>

namespace kirolane::qt {

namespace {
const auto kWake = static_cast<QEvent::Type>(QEvent::registerEventType());
/// A window that nobody sees is not painted: the rest does not wait for it for longer, in milliseconds.
constexpr int kFirstPaintWithin = 200;
} // namespace

ShowApplication::ShowApplication(int& argc, char** argv) : QApplication(argc, argv) {
    connect(this, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            m_held.clear(); // releases go elsewhere from now on
    });
}

bool ShowApplication::notify(QObject* receiver, QEvent* event) {
    NoteKey(*event);
    const bool ofKey = event->type() == QEvent::KeyPress || event->type() == QEvent::Shortcut;
    const bool ofPaint = event->type() == QEvent::Paint;
    const bool outer = std::exchange(m_inKey, ofKey); // events nest
    bool handled = false;
    try {
        handled = QApplication::notify(receiver, event);
    } catch (const std::exception& e) {
        WriteErrorLine(std::string("event: ") + e.what());
    } catch (...) {
        WriteErrorLine("event: unknown failure");
    }
    m_inKey = outer;
    if (ofPaint)
        BeginIdle();
    return handled;
}

void ShowApplication::NoteKey(const QEvent& event) {
    switch (event.type()) {
    case QEvent::ShortcutOverride: // comes ahead of every press, also of one that a command then takes
    case QEvent::KeyPress: {
        const auto& press = static_cast<const QKeyEvent&>(event);
        m_held.insert(press.key());
        m_repeated =
            press.isAutoRepeat() || (press.key() == m_releasedKey && press.timestamp() == m_releasedAt &&
                                     platformName() == QLatin1String("xcb"));
        break;
    }
    case QEvent::KeyRelease: {
        const auto& release = static_cast<const QKeyEvent&>(event);
        m_repeated = false;
        m_releasedKey = release.key();
        m_releasedAt = release.timestamp();
        if (!release.isAutoRepeat())
            m_held.erase(release.key());
        break;
    }
    default:
        break;
    }
}

void ShowApplication::Wake() {
    if (!m_wakePosted.exchange(true))
        postEvent(this, new QEvent(kWake));
}

void ShowApplication::RequestIdle() {
    // A timer without an interval fires once a turn of the loop, after the events at hand; a posted event
    // that posts itself anew would keep the others out.
    m_idleAsked = true;
    if (m_idleTimer == 0)
        m_idleTimer = startTimer(m_idleBegun ? 0 : kFirstPaintWithin);
}

void ShowApplication::BeginIdle() {
    if (std::exchange(m_idleBegun, true) || m_idleTimer == 0)
        return;
    killTimer(m_idleTimer);
    m_idleTimer = startTimer(0);
}

bool ShowApplication::event(QEvent* event) {
    if (event->type() != kWake)
        return QApplication::event(event);
    m_wakePosted = false;
    if (host::Exists())
        host::RunPosted();
    return true;
}

void ShowApplication::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_idleTimer) {
        QApplication::timerEvent(event);
        return;
    }
    BeginIdle();
    m_idleAsked = false;
    const bool more = host::Exists() && host::RunIdleSlice();
    if (!more && !m_idleAsked) {
        killTimer(m_idleTimer);
        m_idleTimer = 0;
    }
}

} // namespace kirolane::qt
