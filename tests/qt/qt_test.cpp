#include "qt_test.h"

#include <qpa/qplatformnativeinterface.h>

namespace kirolane::tests {

namespace {

int g_argc = 1;
char g_name[] = "qt_tests";
char* g_argv[] = {g_name, nullptr};

/// A fine screen tells of itself as an X server's does: by its pixels and how close they lie.
QJsonObject Describe(const std::vector<TestScreen>& screens) {
    QJsonArray list;
    for (const TestScreen& screen : screens)
        list.append(QJsonObject{{"name", QString::fromStdString(screen.name)},
                                {"x", screen.rect.left},
                                {"y", screen.rect.top},
                                {"width", screen.rect.width * screen.pixelRatio},
                                {"height", screen.rect.height * screen.pixelRatio},
                                {"logicalDpi", 96 * screen.pixelRatio},
                                {"logicalBaseDpi", 96},
                                {"dpr", 1}});
    return {{"synchronousWindowSystemEvents", false}, {"windowFrameMargins", false}, {"screens", list}};
}

} // namespace

QtTest::QtTest(const std::vector<TestScreen>& screens)
    : m_files(m_folder.MakeFolder("home"), m_folder.MakeFolder("application")) {
    Begin("offscreen:configfile=" +
          m_folder.Write("screens.json", QJsonDocument(Describe(screens)).toJson().toStdString()));
}

QtTest::QtTest(const std::string& display)
    : m_files(m_folder.MakeFolder("home"), m_folder.MakeFolder("application")) {
    qputenv("DISPLAY", QByteArray::fromStdString(display));
    Begin("xcb");
}

void QtTest::Begin(const std::string& platform) {
    EXPECT_EQ(m_files.Prepare(), "");
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString(platform));
    m_windows = std::make_unique<qt::QtWindows>(g_argc, g_argv);
    m_runtime = std::make_unique<Runtime>(*m_windows, m_media, m_files);
}

QtTest::~QtTest() {
    m_console = nullptr;
    m_runtime.reset();
    m_windows.reset();
}

void QtTest::SetUp() {
    std::string failure;
    ASSERT_TRUE(m_runtime->Start([] { Instance<ConsoleShow>()->Show(); }, failure)) << failure;
    m_console = Instance<ConsoleShow>();
    ASSERT_TRUE(Until([&] { return m_console->Active(); })) << "the console does not come up";
}

void QtTest::Do(const std::function<void()>& handler) {
    EXPECT_TRUE(m_runtime->DeliverNow(*m_console, "test", handler));
}

bool QtTest::Until(const std::function<bool()>& condition) {
    QTimer alarm; // wakes the loop for a look at conditions that no event announces, and at the deadline
    alarm.start(10);
    const QDeadlineTimer deadline(5000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void QtTest::Settle() {
    for (int round = 0; round < 20; ++round)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtTest::SetScreens(const std::vector<TestScreen>& screens) {
    auto* native = QGuiApplication::platformNativeInterface();
    using SetConfiguration = void (*)(const QJsonObject&, QPlatformNativeInterface*);
    auto* set = reinterpret_cast<SetConfiguration>(native->nativeResourceForIntegration("setConfiguration"));
    ASSERT_NE(set, nullptr);
    set(Describe(screens), native);
}

QWidget* QtTest::FindWidget(const std::string& window, const std::string& name) {
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->objectName().toStdString() != window)
            continue;
        QWidget* found = name.empty() ? top : top->findChild<QWidget*>(QString::fromStdString(name));
        if (found != nullptr)
            return found;
    }
    ADD_FAILURE() << "no widget " << window << "." << name;
    return nullptr;
}

QImage QtTest::Look(const std::string& window, const std::string& name) {
    const QWidget* widget = FindWidget(window, name);
    QWidget* top = widget->window();
    return top->grab(QRect(widget->mapTo(top, QPoint()), widget->size())).toImage();
}

} // namespace kirolane::tests
