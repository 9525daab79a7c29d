// The screen stays awake while the audience has a window before it.

#include "qt_test.h"
#include "show_forms.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QStandardPaths>

namespace kirolane::tests {

namespace {

/// A screen saver service that writes down what it is asked.
class ScreenSaverService : public QDBusVirtualObject {
public:
    std::vector<std::string> log;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        log.push_back(message.member().toStdString());
        if (message.member() == QLatin1String("Inhibit"))
            connection.send(message.createReply(QVariant(kCookie)));
        else
            EXPECT_EQ(message.arguments().value(0).toUInt(), kCookie);
        return true;
    }

private:
    static constexpr uint kCookie = 4711;
};

/// A session bus of the test's own. It comes before the application object.
class OwnBus {
public:
    OwnBus() {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (program.isEmpty())
            return;
        m_daemon.start(program, {"--session", "--nofork", "--print-address"});
        if (!m_daemon.waitForReadyRead(5000))
            return;
        m_address = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLocal8Bit());
    }
    ~OwnBus() {
        m_daemon.terminate();
        m_daemon.waitForFinished(5000);
    }
    OwnBus(const OwnBus&) = delete;
    OwnBus& operator=(const OwnBus&) = delete;

    [[nodiscard]] const QString& Address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

class SleepTest : private OwnBus, public QtTest {
protected:
    void SetUp() override {
        if (Address().isEmpty())
            GTEST_SKIP() << "no dbus-daemon here";
        auto bus = QDBusConnection::connectToBus(Address(), QStringLiteral("service"));
        ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
        ASSERT_TRUE(bus.registerVirtualObject(QStringLiteral("/org/freedesktop/ScreenSaver"), &m_service));
    }
    void TearDown() override { QDBusConnection::disconnectFromBus(QStringLiteral("service")); }

    ScreenSaverService m_service;
};

TEST_F(SleepTest, WhileTheAudiencesWindowIsUp) {
    using Names = std::vector<std::string>;
    StartWith<ConsoleShow>();
    Settle();
    EXPECT_EQ(m_service.log, Names());
    Do([] { Instance<MonitorShow>()->Show(); });
    EXPECT_TRUE(Until([&] { return m_service.log == Names{"Inhibit"}; }));
    Do([] { Instance<MonitorShow>()->SetLeft(100); });
    Settle();
    EXPECT_EQ(m_service.log, Names{"Inhibit"}) << "once";
    Do([] { Instance<MonitorShow>()->Hide(); });
    EXPECT_TRUE(Until([&] { return m_service.log == (Names{"Inhibit", "UnInhibit"}); }));

    Do([] { Instance<MonitorShow>()->Show(); });
    Do([] { Instance<MonitorShow>()->Hide(); }); // before the service has answered
    EXPECT_TRUE(Until([&] {
        return m_service.log == (Names{"Inhibit", "UnInhibit", "Inhibit", "UnInhibit"});
    }));
}

} // namespace

} // namespace kirolane::tests
