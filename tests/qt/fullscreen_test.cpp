// The audience's window on its display, and displays that come and go.

#include "backends/qt/convert.h"
#include "backends/qt/keyboardkeeper.h"
#include "contract/screen.h"
#include "qt_test.h"

#include <algorithm>

namespace kirolane::tests {

namespace {

class FullScreenTest : public QtTest {
protected:
    /// Opens the audience's window over the display at the right.
    Ref<MonitorShow> CoverStage() {
        Do([&] {
            auto monitor = Instance<MonitorShow>();
            monitor->SetTop(kStage.top);
            monitor->SetLeft(kStage.left);
            monitor->SetFullScreen(true);
            monitor->Show();
            m_console->Show();
        });
        Settle();
        return Instance<MonitorShow>();
    }
    static bool Covers(const Rect& screen) {
        const QWidget* monitor = Find("MonitorForm");
        return monitor->isVisible() && monitor->isFullScreen() && monitor->geometry() == qt::ToQt(screen) &&
               monitor->screen()->geometry() == qt::ToQt(screen);
    }
    /// That this is the area to fill, since the log was last taken.
    static bool Tells(MonitorShow& monitor, const Rect& area) {
        const auto log = monitor.TakeLog();
        const auto told = QString("ScreenChanged %1x%2").arg(area.width).arg(area.height);
        return std::find(log.begin(), log.end(), told.toStdString()) != log.end();
    }
    static bool Seen(const char* window) { return Find(window)->isVisible(); }
};

TEST_F(FullScreenTest, CoversTheDisplayThatHoldsItAndKeepsLaterPlacesAsValues) {
    auto monitor = CoverStage();
    EXPECT_TRUE(Covers(kStage));
    EXPECT_EQ(Find("Mainform")->screen()->geometry(), qt::ToQt(kMain));
    Do([&] {
        monitor->SetTop(500);
        monitor->SetLeft(6);
    });
    Settle();
    EXPECT_TRUE(Covers(kStage));
    EXPECT_EQ(monitor->Left(), 6);
    Do([&] { monitor->Hide(); });
    Do([&] { monitor->Show(); });
    Settle();
    EXPECT_TRUE(Covers(kStage)) << "its display is the one that it first covered";
}

TEST_F(FullScreenTest, AWindowMadeAnewStandsUnderTheConsole) {
    CoverStage();
    Do([] { Instance<MonitorShow>()->Close(); });
    Do([] { Instance<MonitorShow>()->Show(); });
    const QRect under(m_console->Left(), m_console->Top() + m_console->Height() + 6, 320, 240);
    EXPECT_TRUE(Until([&] { return Find("MonitorForm")->geometry() == under; }));
}

TEST_F(FullScreenTest, WhateverBecomesOfItsDisplayIsCoveredAnewAndTheKeyboardStays) {
    const std::vector<TestScreen> layouts[] = {
        {{"Main", kMain}, {"Stage", {1920, 0, 1280, 720}}},                  // another mode
        {{"Main", {1280, 0, 1920, 1200}}, {"Stage", {0, 40, 1280, 720}}},    // at the operator's left
        {{"Main", {0, 1080, 1920, 1200}}, {"Other", {-200, 0, 1920, 1080}}}, // another connector, above
        {{"Main", kMain}, {"Last", {1920, -480, 1080, 1920}, 2.0}},          // on end, another scale
    };
    auto monitor = CoverStage();
    const auto home = [&] {
        return QGuiApplication::primaryScreen()->geometry().contains(
            m_console->Left() + m_console->Width() / 2, m_console->Top() + m_console->Height() / 2);
    };
    for (const bool hidden : {false, true}) {
        if (hidden)
            Do([&] { m_console->Hide(); });
        const auto keyboardStays = [&] { return hidden ? monitor->Active() : m_console->Active(); };
        ASSERT_TRUE(Until(keyboardStays));
        for (const auto& screens : layouts) {
            SCOPED_TRACE(screens[1].name + (hidden ? " hidden" : ""));
            monitor->TakeLog();
            SetScreens(screens);
            const Rect& stage = screens[1].rect;
            EXPECT_TRUE(Until([&] { return Covers(stage); }));
            EXPECT_TRUE(Until(keyboardStays));
            EXPECT_TRUE(Tells(*monitor, stage));
            EXPECT_TRUE(Until(home)) << "the operator's windows stand apart";
        }
    }
}

TEST_F(FullScreenTest, TheKeyboardIsGivenBackUnlessAPersonHasPressedSomethingMeanwhile) {
    auto monitor = CoverStage();
    for (const bool pressed : {false, true}) {
        qt::KeyboardKeeper keeper;
        Do([&] { m_console->Show(); });
        ASSERT_TRUE(Until([&] { return m_console->Active(); }));
        keeper.Begin();
        Find("MonitorForm")->activateWindow();
        ASSERT_TRUE(Until([&] { return monitor->Active(); }));
        if (pressed)
            Press(Qt::Key_Space); // which a command takes
        keeper.GiveBack();
        Settle();
        EXPECT_EQ(monitor->Active(), pressed);
    }
}

TEST_F(FullScreenTest, AWindowManagerThatInsistsOnAnotherPlaceHasItUntilItGivesIn) {
    auto monitor = CoverStage();
    for (const Rect& place : {Rect{1920, 0, 1280, 720}, kStage})
        EXPECT_TRUE(Until([&] {
            Find("MonitorForm")->setGeometry(qt::ToQt(place));
            return Tells(*monitor, place);
        })) << place.width;
}

TEST_F(FullScreenTest, AThirdDisplayIsNoSuccessor) {
    const Rect left{-1024, 0, 1024, 768};
    SetScreens({{"Main", kMain}, {"Stage", kStage}, {"Left", left}});
    Settle();
    CoverStage();
    EXPECT_EQ(m_windows->Screens()[1], kStage) << "what is covered comes before one at its left";
    SetScreens({{"Main", kMain}, {"Left", left}});
    EXPECT_TRUE(Until([] { return !Seen("MonitorForm"); }));
    Do([] { // the logic goes on placing and showing what it holds
        Instance<MonitorShow>()->SetLeft(6);
        Instance<MonitorShow>()->Show();
    });
    Settle();
    EXPECT_FALSE(Seen("MonitorForm"));
    SetScreens({{"Main", kMain}, {"Left", left}, {"New", kStage}});
    EXPECT_TRUE(Until([] { return Covers(kStage); }));
}

TEST_F(FullScreenTest, TheMainDisplayMayGo) {
    CoverStage();
    SetScreens({{"Stage", kStage}});
    Settle();
    EXPECT_TRUE(Until([] { return Covers(kStage); }));
    EXPECT_TRUE(m_console->Visible());
    EXPECT_EQ(m_windows->Screens().size(), 1U);
}

TEST_F(FullScreenTest, ScreensAreTheMainOneAndThenFromLeftToRight) {
    SetScreens({{"Main", kMain}, {"Far", {3840, 0, 1280, 720}}, {"Near", {1920, 100, 1920, 1080}}});
    Settle();
    std::vector<int> lefts;
    for (int index = 0; index < ScreenCount(); ++index)
        lefts.push_back(Screen(index).Left());
    EXPECT_EQ(lefts, (std::vector<int>{0, 1920, 3840}));
}

} // namespace

} // namespace kirolane::tests
