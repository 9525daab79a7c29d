// The audience's window on its display, and displays that come and go.

#include "qt_test.h"
#include "show_forms.h"

#include <QScreen>
#include <QWindow>

namespace kirolane::tests {

namespace {

class FullScreenTest : public QtTest {
protected:
    static constexpr Rect kMain{0, 0, 1920, 1200};
    static constexpr Rect kStage{1920, 0, 1920, 1080};

    /// Opens the audience's window over the display at the right.
    Ref<MonitorShow> CoverStage() {
        Do([] {
            auto monitor = Instance<MonitorShow>();
            monitor->SetTop(kStage.top);
            monitor->SetLeft(kStage.left);
            monitor->SetFullScreen(true);
            monitor->Show();
            Instance<ConsoleShow>()->Show();
        });
        Settle();
        return Instance<MonitorShow>();
    }
    static bool Covers(const QRect& screen) {
        const QWidget* monitor = Find("MonitorForm");
        return monitor->isVisible() && monitor->isFullScreen() && monitor->geometry() == screen &&
               monitor->screen()->geometry() == screen;
    }
    /// That this is the area to fill, since the log was last taken.
    static bool Tells(MonitorShow& monitor, const QRect& area) {
        const auto log = monitor.TakeLog();
        const auto told = QString("ScreenChanged %1x%2").arg(area.width()).arg(area.height());
        return std::find(log.begin(), log.end(), told.toStdString()) != log.end();
    }
    static QRect Area(const Rect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }
};

TEST_F(FullScreenTest, CoversTheDisplayThatHoldsItAndKeepsLaterPlacesAsValues) {
    auto console = StartWith<ConsoleShow>();
    auto monitor = CoverStage();
    EXPECT_TRUE(Covers(Area(kStage)));
    EXPECT_TRUE(Find("Mainform")->screen()->geometry() == Area(kMain));

    Do([&] {
        monitor->SetTop(500);
        monitor->SetLeft(6);
    });
    Settle();
    EXPECT_TRUE(Covers(Area(kStage)));
    EXPECT_EQ(monitor->Left(), 6);

    Do([&] { monitor->Hide(); });
    Do([&] { monitor->Show(); });
    Settle();
    EXPECT_TRUE(Covers(Area(kStage))) << "its display is the one that it first covered";
}

TEST_F(FullScreenTest, WithItsDisplayGoneAHiddenConsoleComesBack) {
    auto console = StartWith<ConsoleShow>();
    CoverStage();
    Do([&] { console->Hide(); });
    Settle();
    ASSERT_FALSE(Find("Mainform")->isVisible());
    SetScreens({{"Main", kMain}});
    EXPECT_TRUE(Until([&] { return Find("Mainform")->isVisible() && console->Active(); }));
    Do([&] { console->Hide(); });
    EXPECT_TRUE(Until([&] { return Find("Mainform")->isVisible(); })) << "nor can it be hidden now";
    EXPECT_TRUE(console->Visible());
}

TEST_F(FullScreenTest, AWindowMadeAnewStandsUnderTheConsole) {
    auto console = StartWith<ConsoleShow>();
    CoverStage();
    Do([] { Instance<MonitorShow>()->Close(); });
    Do([] { Instance<MonitorShow>()->Show(); });
    EXPECT_TRUE(Until([&] {
        return Find("MonitorForm")->geometry() ==
               QRect(console->Left(), console->Top() + console->Height() + 6, 320, 240);
    }));
}

TEST_F(FullScreenTest, WhateverBecomesOfItsDisplayIsCoveredAnewAndTheKeyboardStays) {
    const std::vector<TestScreen> layouts[] = {
        {{"Main", kMain}, {"Stage", {1920, 0, 1280, 720}}},                  // another mode
        {{"Main", {1280, 0, 1920, 1200}}, {"Stage", {0, 40, 1280, 720}}},    // at the operator's left
        {{"Main", {0, 1080, 1920, 1200}}, {"Other", {-200, 0, 1920, 1080}}}, // another connector, above
        {{"Main", kMain}, {"Last", {1920, -480, 1080, 1920}, 2.0}},          // on end, another scale
    };
    auto console = StartWith<ConsoleShow>();
    auto monitor = CoverStage();
    const auto home = [&](const Window& window) {
        return QGuiApplication::primaryScreen()->geometry().contains(window.Left() + window.Width() / 2,
                                                                     window.Top() + window.Height() / 2);
    };
    for (const bool hidden : {false, true}) {
        if (hidden)
            Do([&] { console->Hide(); });
        ASSERT_TRUE(Until([&] { return hidden ? monitor->Active() : console->Active(); }));
        for (const auto& screens : layouts) {
            SCOPED_TRACE(screens[1].name + (hidden ? " hidden" : ""));
            monitor->TakeLog();
            SetScreens(screens);
            const Rect& stage = screens[1].rect;
            EXPECT_TRUE(Until([&] { return Covers(Area(stage)); }));
            EXPECT_TRUE(Until([&] { return hidden ? monitor->Active() : console->Active(); }));
            EXPECT_TRUE(Tells(*monitor, Area(stage)));
            EXPECT_TRUE(Until([&] { return home(*console); })) << "the operator's windows stand apart";
        }
    }
}

TEST_F(FullScreenTest, AWindowManagerThatInsistsOnAnotherPlaceHasItUntilItGivesIn) {
    StartWith<ConsoleShow>();
    auto monitor = CoverStage();
    for (const QRect& place : {QRect(1920, 0, 1280, 720), Area(kStage)})
        EXPECT_TRUE(Until([&] {
            Find("MonitorForm")->setGeometry(place);
            return Tells(*monitor, place);
        })) << place.width();
}

TEST_F(FullScreenTest, AThirdDisplayIsNoSuccessor) {
    StartWith<ConsoleShow>();
    const Rect left{-1024, 0, 1024, 768};
    SetScreens({{"Main", kMain}, {"Stage", kStage}, {"Left", left}});
    Settle();
    CoverStage();
    EXPECT_EQ(Windows().Screens()[1], kStage) << "what is covered comes before one at its left";
    SetScreens({{"Main", kMain}, {"Left", left}});
    EXPECT_TRUE(Until([] { return !Find("MonitorForm")->isVisible(); }));
    Do([] { // the logic goes on placing and showing what it holds
        Instance<MonitorShow>()->SetLeft(6);
        Instance<MonitorShow>()->Show();
    });
    Settle();
    EXPECT_FALSE(Find("MonitorForm")->isVisible());
    SetScreens({{"Main", kMain}, {"Left", left}, {"New", kStage}});
    EXPECT_TRUE(Until([] { return Covers(Area(kStage)); }));
}

TEST_F(FullScreenTest, TheMainDisplayMayGo) {
    auto console = StartWith<ConsoleShow>();
    CoverStage();
    SetScreens({{"Stage", kStage}});
    Settle();
    EXPECT_TRUE(Until([] { return Covers(Area(kStage)); }));
    EXPECT_TRUE(console->Visible());
    EXPECT_EQ(Windows().Screens().size(), 1U);
}

TEST_F(FullScreenTest, ScreensAreTheMainOneAndThenFromLeftToRight) {
    StartWith<ConsoleShow>();
    const Rect far{3840, 0, 1280, 720};
    SetScreens({{"Main", kMain},
                {"Far", far},
                {"Near", {1920, 100, 1920, 1080}},
                {"Mirror of main", kMain},
                {"Mirror of far", far}});
    Settle();
    const std::vector<Rect> wanted = {kMain, {1920, 100, 1920, 1080}, far}; // mirrors count as one
    EXPECT_TRUE(Windows().Screens() == wanted);
}

} // namespace

} // namespace kirolane::tests
