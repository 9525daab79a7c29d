#include "logic_test.h"

namespace kirolane::tests {

/// Hiding the console, moving it, what the monitor window does with keys and activation.
class WindowsTest : public LogicTest {
protected:
    void StartWith(const Lines& lines, int screens = 1) {
        SetScreens(screens);
        const std::string movies = MakeMedia("movies", {"a.mov"});
        Lines all = {{22, movies}};
        all.insert(lines.begin(), lines.end());
        WriteSettings(all);
        Start();
    }
    static std::string HideText() { return Console().AltX_Key()->Text(); }
};

TEST_F(WindowsTest, OneKeyHidesTheConsoleAndBringsItBack) {
    StartWith({{2, "false"}});
    Do([] { Sound().Show(); });
    Open(0);
    Choose("AltX_Key");
    EXPECT_TRUE(Console().AltX_Flag);
    EXPECT_FALSE(Console().Visible());
    EXPECT_FALSE(Sound().Visible());
    EXPECT_TRUE(Monitor().Visible());
    EXPECT_TRUE(Console().MenuBarVisible());
    EXPECT_EQ(HideText(), "コンソールウィンドウを表示する");
    EXPECT_TRUE(Console().QTM()->Running());

    Monitor().ReportMenuChosen("AltX_Key");
    EXPECT_FALSE(Console().AltX_Flag);
    EXPECT_TRUE(Console().Visible());
    EXPECT_FALSE(Sound().Visible()) << "no sound is open";
    EXPECT_EQ(HideText(), "コンソールウィンドウを隠す");

    Do([] { Console().mFileOpen_Flag = true; });
    Choose("AltX_Key");
    Monitor().ReportMenuChosen("AltX_Key");
    EXPECT_TRUE(Sound().Visible());
}

TEST_F(WindowsTest, FullScreenOnOneDisplayTakesTheMenuBarAlong) {
    StartWith({{2, "false"}, {4, "true"}});
    Choose("AltX_Key");
    EXPECT_FALSE(Console().MenuBarVisible());
    EXPECT_FALSE(Monitor().MenuBarVisible());
    Monitor().ReportMenuChosen("AltX_Key");
    EXPECT_TRUE(Console().MenuBarVisible());
    EXPECT_TRUE(Monitor().MenuBarVisible());
}

TEST_F(WindowsTest, MovesOfTheConsoleTakeTheWindowedMonitorAlong) {
    const struct {
        Lines lines;
        int screens;
        bool follows;
        bool visible;
    } cases[] = {
        {{{2, "false"}}, 1, true, true},
        {{{2, "false"}}, 2, true, true},
        {{{2, "false"}, {4, "true"}}, 1, true, true}, // as values; the window covers its screen
        {{{2, "true"}}, 2, false, true},
        {{{2, "x"}}, 1, false, true},
        {{{2, "false"}, {8, "true"}}, 1, false, false},
    };
    for (const auto& c : cases) {
        StartWith(c.lines, c.screens);
        const Point before = {Monitor().Left(), Monitor().Top()};
        Console().ReportMoved(-300, 900);
        const Point after = {Monitor().Left(), Monitor().Top()};
        EXPECT_EQ(after, c.follows ? (Point{-300, 900 + 420 + 6}) : before);
        EXPECT_EQ(Monitor().Visible(), c.visible);
        End();
    }
}

TEST_F(WindowsTest, SavedLinesAndScreensActAtTheNextMove) {
    StartWith({{2, "true"}}, 2);
    SetScreens(1);
    Console().ReportMoved(10, 20);
    EXPECT_EQ(Monitor().Left(), 10) << "the second display has gone";
    Do([] { Console().Setting_Data.Set(8, "true"); });
    Console().ReportMoved(30, 40);
    EXPECT_FALSE(Monitor().Visible());
    EXPECT_EQ(Monitor().Left(), 10);
}

TEST_F(WindowsTest, ActivationPutsTheFocusOnTheListInFront) {
    StartWith({});
    const auto focus = [] { return Console().FocusControl()->Name(); };
    const auto unfocus = [&] { Do([] { Console().Rate()->SetFocus(); }); };
    for (const std::int32_t page : {1, 0}) {
        Console().ListTab()->ReportPage(page);
        const std::string list = page == 0 ? "StrGrid" : "mStrGrid";
        unfocus();
        Console().ReportActivated();
        EXPECT_EQ(focus(), list);
        unfocus();
        Console().ReportDeactivated();
        EXPECT_EQ(focus(), list);
        unfocus();
        Console().ReportRestored();
        EXPECT_EQ(focus(), list);
    }
}

TEST_F(WindowsTest, TheMonitorBringsTheConsoleBackUnlessItIsHiddenOnPurpose) {
    Windows().UseDesktop();
    StartWith({{2, "false"}, {4, "true"}});
    Monitor().ReportActivated();
    EXPECT_EQ(Windows().ActiveWindow(), "Mainform");
    Choose("AltX_Key");
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "MonitorForm");
    Monitor().ReportActivated();
    EXPECT_FALSE(Console().Visible());
}

TEST_F(WindowsTest, QuittingTheMonitorClosesItAloneAndTheNextUseMakesItAnew) {
    StartWith({{2, "false"}});
    Open(0);
    Monitor().ReportMenuChosen("FileQuit");
    EXPECT_FALSE(TheRuntime().Ended());
    EXPECT_EQ(TheRuntime().Forms().All().size(), 4U);
    EXPECT_TRUE(Console().QTM()->Running());
    Advance(1000); // the tick names it
    EXPECT_EQ(TheRuntime().Forms().All().size(), 5U);
    EXPECT_EQ(Monitor().Width(), 320);
    EXPECT_TRUE(Monitor().QTM()->Movie().IsNil());
    Open(0);
    EXPECT_TRUE(Monitor().QTM()->Running());
    EXPECT_EQ(Monitor().QTM()->Width(), 800);
    Choose("FileQuit");
    EXPECT_TRUE(TheRuntime().Ended()) << "the console leaves it to the runtime";
}

} // namespace kirolane::tests
