// Frames, places, the keyboard between windows, and the event loop.

#include "backends/qt/formwindow.h"
#include "contract/bevelbutton.h"
#include "contract/pushbutton.h"
#include "contract/thread.h"
#include "qt_test.h"
#include "show_forms.h"
#include "support/captured_stderr.h"

#include <QMenuBar>
#include <QScreen>
#include <QTableView>
#include <QTimer>

#include <locale.h>

namespace kirolane::tests {

namespace {

using Names = std::vector<std::string>;

class WindowsTest : public QtTest {
protected:
    static qt::FormWindow& Frame(const std::string& name) {
        return *dynamic_cast<qt::FormWindow*>(Find(name));
    }
};

TEST_F(WindowsTest, ConsoleStandsAtTheTopLeftOfTheMainScreenAndThePaletteBesideIt) {
    auto console = StartWith<ConsoleShow>();
    Do([] { Instance<MusicShow>()->Show(); });
    Settle();

    const QPoint content = Frame("Mainform").ContentPlace();
    EXPECT_EQ(content, QPoint(console->Left(), console->Top()));
    EXPECT_LT(content.x(), 40);
    EXPECT_LT(content.y(), 100);
    EXPECT_EQ(Frame("Mainform").Content().size(), QSize(800, 420));
    EXPECT_EQ(Frame("Mainform").minimumSize(), Frame("Mainform").maximumSize());

    auto music = Instance<MusicShow>();
    EXPECT_GT(music->Left(), console->Left() + console->Width());
    EXPECT_LT(music->Left(), console->Left() + console->Width() + 40);
    EXPECT_EQ(Frame("MusicForm").ContentPlace(), QPoint(music->Left(), music->Top()));
    EXPECT_EQ(Frame("MusicForm").screen(), QGuiApplication::primaryScreen());
}

TEST_F(WindowsTest, OnlyTheConsoleShowsAMenuBarAndItsContentStaysWhereItIsWithout) {
    auto console = StartWith<ConsoleShow>();
    Do([] { Instance<MonitorShow>()->Show(); });
    const auto* bar = Find("Mainform")->findChild<QMenuBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(Find("MonitorForm")->findChild<QMenuBar*>(), nullptr);

    const QPoint before = Frame("Mainform").ContentPlace();
    Do([&] { console->SetMenuBarVisible(false); });
    Settle();
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(Frame("Mainform").ContentPlace(), before);
    EXPECT_EQ(Frame("Mainform").Content().size(), QSize(800, 420));
}

TEST_F(WindowsTest, EachFrameIsOfItsKind) {
    StartWith<ConsoleShow>();
    Do([] {
        Instance<MonitorShow>()->Show();
        Instance<SettingShow>()->Show();
        Instance<MusicShow>()->Show();
        Instance<AboutShow>()->Show();
    });
    Settle();
    EXPECT_TRUE(Find("MonitorForm")->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(Find("MonitorForm")->cursor().shape(), Qt::BlankCursor);
    EXPECT_FALSE(Find("Mainform")->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(Find("MusicForm")->windowFlags() & Qt::WindowDoesNotAcceptFocus);
    for (const char* above : {"SettingForm", "MusicForm"})
        EXPECT_EQ(Find(above)->windowHandle()->transientParent(), Find("Mainform")->windowHandle()) << above;
    EXPECT_FALSE(Find("SettingForm")->isModal());
}

TEST_F(WindowsTest, AMoveByHandIsReportedOnceAndAWriteOfTheLogicIsNot) {
    auto console = StartWith<ConsoleShow>();
    Do([] { Instance<MonitorShow>()->Show(); });
    // Until a placing of the program's own has settled, moves are taken for the window manager's answer.
    ASSERT_TRUE(Until([&] {
        Find("Mainform")->move(300, 200);
        Settle();
        return console->Left() == 300;
    }));
    EXPECT_EQ(QPoint(console->Left(), console->Top()), Frame("Mainform").ContentPlace());
    EXPECT_EQ(console->TakeLog().back(), "Moved");

    auto monitor = Instance<MonitorShow>();
    monitor->TakeLog();
    Do([&] {
        monitor->SetLeft(600);
        monitor->SetTop(640);
    });
    EXPECT_TRUE(Until([&] { return Frame("MonitorForm").ContentPlace() == QPoint(600, 640); }));
    Settle();
    EXPECT_EQ(monitor->TakeLog(), Names());
    EXPECT_EQ(console->TakeLog(), Names());
}

TEST_F(WindowsTest, ClosingIsTheContractsToDecide) {
    auto console = StartWith<ConsoleShow>();
    Do([] {
        Instance<AboutShow>()->Show();
        Instance<MusicShow>()->Show();
        Instance<SettingShow>()->Show();
    });
    Find("VerForm")->close();
    EXPECT_TRUE(Find("VerForm")->isVisible()) << "has no close box";
    Find("MusicForm")->close();
    EXPECT_FALSE(Instance<MusicShow>()->Visible());
    EXPECT_FALSE(Find("MusicForm")->isVisible());

    auto setting = Instance<SettingShow>();
    Find("SettingForm")->close();
    EXPECT_EQ(setting->TakeLog().back(), "Close");
    setting = nullptr;
    Settle();
    Find("Mainform")->close();
    EXPECT_EQ(console->TakeLog().back(), "Close");
}

TEST_F(WindowsTest, AWindowMayGoWithinTheEventOfItsOwnControl) {
    StartWith<ConsoleShow>();
    Do([] {
        auto about = Instance<AboutShow>();
        about->Control<PushButton>("OKButton")->OnAction = [] { Instance<AboutShow>()->Close(); };
        about->Show();
    });
    QTest::mouseClick(Find("VerForm", "OKButton"), Qt::LeftButton);
    Settle();
    for (const QWidget* top : QApplication::topLevelWidgets())
        EXPECT_NE(top->objectName().toStdString(), "VerForm");
}

TEST_F(WindowsTest, TheKeyboardGoesWhereItIsSentAndEachChangeIsToldOnce) {
    auto console = StartWith<ConsoleShow>();
    EXPECT_EQ(console->TakeLog(), Names{"Activate"});
    Do([] { Instance<SettingShow>()->Show(); });
    auto setting = Instance<SettingShow>();
    ASSERT_TRUE(Until([&] { return setting->Active() && !console->Active(); }));
    EXPECT_EQ(console->TakeLog(), Names{"Deactivate"});
    EXPECT_EQ(setting->TakeLog(), Names{"Activate"});

    Do([&] { console->Control<BevelButton>("Fold1")->SetFocus(); });
    Settle();
    EXPECT_TRUE(setting->Active()) << "SetFocus moves the keyboard within its window only";

    Do([&] { console->Show(); });
    EXPECT_TRUE(Until([&] { return console->Active() && !setting->Active(); }));
}

TEST_F(WindowsTest, AMinimisedConsoleTellsOfItsReturn) {
    auto console = StartWith<ConsoleShow>();
    Find("Mainform")->showMinimized();
    Settle();
    console->TakeLog();
    Do([&] { console->Show(); });
    EXPECT_TRUE(Until([&] {
        const auto log = console->TakeLog();
        return std::find(log.begin(), log.end(), "Restore") != log.end();
    }));
    EXPECT_FALSE(Find("Mainform")->isMinimized());
}

TEST_F(WindowsTest, AFailureInAHandlerOfTheToolkitEndsNothing) {
    StartWith<ConsoleShow>();
    CapturedStderr captured;
    QTimer::singleShot(0, [] { throw std::runtime_error("test failure"); });
    Settle();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front(), "kirolane: event: test failure");
}

TEST_F(WindowsTest, IdleSlicesLeaveRoomForEvents) {
    auto console = StartWith<ConsoleShow>();
    bool stop = false;
    int turns = 0;
    auto thread = console->Control<Thread>("FolderThread");
    thread->OnRun = [&]() -> Task {
        while (!stop) {
            ++turns;
            co_await Yield();
        }
    };
    Do([&] { thread->Run(); });
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&] { ++ticks; });
    clock.start(5);
    EXPECT_TRUE(Until([&] { return ticks >= 20; }));
    EXPECT_GT(turns, 1000);
    stop = true;
    EXPECT_TRUE(Until([&] { return !TheRuntime().Threads().HasReady(); }));
}

TEST_F(WindowsTest, TheLoopEndsWithTheStatusGivenAndNotWithItsLastWindow) {
    StartWith<ConsoleShow>();
    QTimer::singleShot(0, [] {
        Find("Mainform")->hide();
        QTimer::singleShot(20, [] { Runtime::Current().Quit(3); });
    });
    EXPECT_EQ(TheRuntime().Run(), 3);
    EXPECT_STREQ(localeconv()->decimal_point, ".");
}

} // namespace

} // namespace kirolane::tests
