#include "backends/qt/formwindow.h"
#include "contract/pushbutton.h"
#include "contract/thread.h"
#include "qt_test.h"
#include "support/captured_stderr.h"

#include <clocale>

namespace kirolane::tests {

namespace {

class WindowsTest : public QtTest {
protected:
    static QPoint Content(const std::string& name) {
        return dynamic_cast<qt::FormWindow*>(Find(name))->ContentPlace();
    }
    static QPoint Place(const Window& window) { return {window.Left(), window.Top()}; }
};

TEST_F(WindowsTest, ConsoleStandsAtTheTopLeftOfTheMainScreenAndThePaletteBesideIt) {
    auto music = ShowForm<MusicShow>();
    const QPoint content = Content("Mainform");
    EXPECT_EQ(content, Place(*m_console));
    EXPECT_TRUE(QRect(0, 0, 40, 100).contains(content));
    const int gap = music->Left() - m_console->Left() - m_console->Width();
    EXPECT_TRUE(gap > 0 && gap < 40) << gap;
    EXPECT_EQ(Content("MusicForm"), Place(*music));
    EXPECT_EQ(Find("MusicForm")->screen(), QGuiApplication::primaryScreen());

    ShowForm<MonitorShow>();
    EXPECT_EQ(Content("MonitorForm"), content + QPoint(0, m_console->Height() + 6));
    EXPECT_EQ(Find("MonitorForm")->findChild<QMenuBar*>(), nullptr) << "the console alone has one";
    const auto* bar = Find("Mainform")->findChild<QMenuBar*>();
    EXPECT_TRUE(bar->isVisible());
    m_console->TakeLog();
    Do([&] { m_console->SetMenuBarVisible(false); });
    Settle();
    EXPECT_EQ(m_console->TakeLog(), Names()) << "what the placing itself moves is no move of a person's";
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(Content("Mainform"), content) << "without its bar the content stays where it is";
    EXPECT_EQ(Find("Mainform")->size(), QSize(800, 420));
}

TEST_F(WindowsTest, AMoveByHandIsReportedAndAWriteOfTheLogicIsNot) {
    auto monitor = ShowForm<MonitorShow>();
    // Until a placing of the program's own has settled, moves are taken for the window manager's answer.
    ASSERT_TRUE(Until([&] {
        Find("Mainform")->move(300, 200);
        Settle();
        return m_console->Left() == 300;
    }));
    EXPECT_EQ(Place(*m_console), Content("Mainform"));
    EXPECT_EQ(m_console->TakeLog().back(), "Moved");
    monitor->TakeLog();
    Do([&] {
        monitor->SetLeft(600);
        monitor->SetTop(640);
    });
    EXPECT_TRUE(Until([] { return Content("MonitorForm") == QPoint(600, 640); }));
    Settle();
    EXPECT_EQ(monitor->TakeLog(), Names());
}

TEST_F(WindowsTest, ClosingIsTheContractsToDecide) {
    ShowForm<AboutShow>();
    Find("VerForm")->close();
    EXPECT_TRUE(Find("VerForm")->isVisible()) << "has no close box";
    Get<PushButton, AboutShow>("OKButton")->OnAction = [] { Instance<AboutShow>()->Close(); };
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Find("VerForm")->isVisible());
    ShowForm<AboutShow>();
    Click(Find("VerForm", "OKButton"), {9, 9}); // it goes within the event of its own control
    Settle();
    for (const QWidget* top : QApplication::topLevelWidgets())
        EXPECT_NE(top->objectName(), "VerForm");
    auto music = ShowForm<MusicShow>();
    Find("MusicForm")->close();
    EXPECT_FALSE(music->Visible() || Find("MusicForm")->isVisible());
    ShowForm<SettingShow>();
    Press(Qt::Key_Escape);
    Settle();
    for (const QWidget* top : QApplication::topLevelWidgets())
        EXPECT_NE(top->objectName(), "SettingForm");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Find("Mainform")->isVisible()) << "it leaves dialogs alone";
    Find("Mainform")->close();
    EXPECT_EQ(m_console->TakeLog().back(), "Close");
}

TEST_F(WindowsTest, AMinimisedConsoleTellsOfItsReturn) {
    Find("Mainform")->showMinimized();
    Settle();
    m_console->TakeLog();
    Do([&] { m_console->Show(); });
    EXPECT_TRUE(Until([&] {
        const auto log = m_console->TakeLog();
        return std::find(log.begin(), log.end(), "Restore") != log.end();
    }));
    EXPECT_FALSE(Find("Mainform")->isMinimized());
}

TEST_F(WindowsTest, AFailureInAHandlerOfTheToolkitEndsNothing) {
    CapturedStderr captured;
    QTimer::singleShot(0, [] { throw std::runtime_error("test failure"); });
    Settle();
    EXPECT_EQ(captured.Lines(), Names{"kirolane: event: test failure"});
}

TEST_F(WindowsTest, IdleSlicesLeaveRoomForEvents) {
    int turns = 0;
    auto thread = Get<Thread>("FolderThread");
    thread->OnRun = [&]() -> Task {
        for (;; ++turns)
            co_await Yield();
    };
    Do([&] { thread->Run(); });
    int ticks = 0;
    QTimer clock;
    clock.callOnTimeout([&] { ++ticks; });
    clock.start(5);
    const QDeadlineTimer soon(1000);
    EXPECT_TRUE(Until([&] { return ticks >= 20; }) && !soon.hasExpired());
    EXPECT_GT(turns, 1000);
    thread->Kill();
}

TEST_F(WindowsTest, TheLoopEndsWithTheStatusGivenAndNotWithItsLastWindow) {
    QTimer::singleShot(0, [] {
        Find("Mainform")->hide();
        QTimer::singleShot(20, [] { Runtime::Current().Quit(3); });
    });
    EXPECT_EQ(m_runtime->Run(), 3);
    m_console->TakeLog();
    m_console->ReportRestored();
    EXPECT_EQ(m_console->TakeLog(), Names()) << "no event follows";
    EXPECT_STREQ(std::localeconv()->decimal_point, ".");
}

} // namespace

} // namespace kirolane::tests
