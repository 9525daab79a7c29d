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

TEST_F(FullScreenTest, OnOneDisplayItCoversTheMainOne) {
    StartWith<ConsoleShow>();
    Do([] {
        Instance<MonitorShow>()->SetFullScreen(true);
        Instance<MonitorShow>()->Show();
    });
    Settle();
    EXPECT_TRUE(Covers(Area(kMain)));
}

TEST_F(FullScreenTest, ADisplayThatGoesTakesTheWindowAlongAndBringsItBack) {
    auto console = StartWith<ConsoleShow>();
    auto monitor = CoverStage();
    ASSERT_TRUE(Covers(Area(kStage)));
    for (int times = 0; times < 3; ++times) {
        SetScreens({{"Main", kMain}});
        ASSERT_TRUE(Until([] { return !Find("MonitorForm")->isVisible(); }))
            << "it would stand before the console";
        EXPECT_TRUE(monitor->Visible()) << "what the logic holds stays";
        EXPECT_TRUE(Find("Mainform")->isVisible());
        // The logic goes on placing and showing what it holds.
        Do([&] {
            monitor->SetLeft(console->Left());
            monitor->Show();
            console->Show();
        });
        Settle();
        EXPECT_FALSE(Find("MonitorForm")->isVisible());

        SetScreens({{"Main", kMain}, {"Stage", kStage}});
        ASSERT_TRUE(Until([] { return Covers(Area(kStage)); }));
    }
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

TEST_F(FullScreenTest, ADisplayThatChangesIsCoveredAnew) {
    StartWith<ConsoleShow>();
    CoverStage();
    const Rect smaller{1920, 0, 1280, 720};
    SetScreens({{"Main", kMain}, {"Stage", smaller}});
    EXPECT_TRUE(Until([&] { return Covers(Area(smaller)); }));
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
    const auto screens = Windows().Screens();
    ASSERT_EQ(screens.size(), 3U) << "mirrors count as one";
    EXPECT_EQ(screens[0], kMain);
    EXPECT_EQ(screens[1], (Rect{1920, 100, 1920, 1080}));
    EXPECT_EQ(screens[2], far);
}

} // namespace

} // namespace kirolane::tests
