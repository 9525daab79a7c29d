// The screen stays awake while the audience has a window before it.

#include "qt_test.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace kirolane::tests {

namespace {

constexpr const char* kScreenSaver = "org.freedesktop.ScreenSaver";

class ScreenSaverService : public QDBusVirtualObject {
public:
    Names log;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        constexpr uint kCookie = 4711;
        log.push_back(message.member().toStdString());
        if (message.member() == QLatin1String("Inhibit"))
            connection.send(message.createReply(QVariant(kCookie)));
        else
            EXPECT_EQ(message.arguments().value(0).toUInt(), kCookie);
        return true;
    }
};

class SleepTest : public QtTest {
protected:
    void SetUp() override {
        m_daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        ASSERT_TRUE(m_daemon.waitForStarted(5000) && m_daemon.waitForReadyRead(5000))
            << "install dbus-daemon, as packaging/debian-packages.txt has it";
        const QString address = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLocal8Bit());
        auto bus = QDBusConnection::connectToBus(address, "service");
        ASSERT_TRUE(bus.registerService(kScreenSaver));
        ASSERT_TRUE(bus.registerVirtualObject("/org/freedesktop/ScreenSaver", &m_service));
        QtTest::SetUp();
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus("service");
        m_daemon.terminate();
        m_daemon.waitForFinished(5000);
    }

    QProcess m_daemon;
    ScreenSaverService m_service;
};

TEST_F(SleepTest, WhileTheAudiencesWindowIsUp) {
    const auto asked = [&](const Names& wanted) { return Until([&] { return m_service.log == wanted; }); };
    Settle();
    EXPECT_EQ(m_service.log, Names());
    auto monitor = ShowForm<MonitorShow>();
    EXPECT_TRUE(asked({"Inhibit"}));
    Do([&] { monitor->SetLeft(100); });
    Settle();
    EXPECT_EQ(m_service.log, Names{"Inhibit"}) << "once";
    QDBusConnection bus("service");
    ASSERT_TRUE(bus.unregisterService(kScreenSaver) && bus.registerService(kScreenSaver));
    EXPECT_TRUE(asked({"Inhibit", "Inhibit"})) << "a service that begins anew";
    Do([&] { monitor->Hide(); });
    EXPECT_TRUE(asked({"Inhibit", "Inhibit", "UnInhibit"}));
    Do([&] { monitor->Show(); });
    Do([&] { monitor->Hide(); }); // before the service has answered
    EXPECT_TRUE(asked({"Inhibit", "Inhibit", "UnInhibit", "Inhibit", "UnInhibit"}));
}

} // namespace

} // namespace kirolane::tests
