#include "backends/qt/sleepinhibitor.h"

#include "backends/qt/x11.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QFile>

#include <utility>

namespace kirolane::qt {

namespace {

QString Service() {
    return QStringLiteral("org.freedesktop.ScreenSaver");
}

QDBusMessage Call(const QString& method) {
    return QDBusMessage::createMethodCall(Service(), QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          Service(), method);
}

/// Asking for a bus where there is none would try to start one.
bool HasSessionBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace

SleepInhibitor::~SleepInhibitor() {
    Set(false);
}

void SleepInhibitor::Set(bool awake) {
    if (awake == m_awake)
        return;
    m_awake = awake;
    AskService(awake);
    X11SuspendScreenSaver(awake);
}

void SleepInhibitor::AskService(bool awake) {
    if (!HasSessionBus())
        return;
    if (!awake) {
        if (m_cookie.has_value())
            Release(*std::exchange(m_cookie, std::nullopt));
        return;
    }
    FollowService();
    QDBusMessage inhibit = Call(QStringLiteral("Inhibit"));
    inhibit << QStringLiteral("Kirolane") << QStringLiteral("上映中");
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(inhibit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<uint> reply = *call;
        call->deleteLater();
        if (reply.isError())
            return; // no such service here
        if (m_awake && !m_cookie.has_value())
            m_cookie = reply.value();
        else
            Release(reply.value()); // the window went while the service thought
    });
}

void SleepInhibitor::FollowService() {
    if (m_service != nullptr)
        return;
    m_service = new QDBusServiceWatcher(Service(), QDBusConnection::sessionBus(),
                                        QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_service, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        m_cookie.reset();
        if (m_awake)
            AskService(true);
    });
}

void SleepInhibitor::Release(uint cookie) {
    QDBusMessage release = Call(QStringLiteral("UnInhibit"));
    release << cookie;
    QDBusConnection::sessionBus().send(release);
}

} // namespace kirolane::qt
