#include "logic_test.h"

#include <functional>

namespace kirolane::tests {

class WindowsTest : public LogicTest {
protected:
    void StartWith(Lines lines, int screens = 1) {
        SetScreens(screens);
        lines[22] = MakeMedia("media", {"a.mov", "s.wav"});
        lines[33] = lines[22];
        WriteSettings(lines);
        Start();
    }
    /// What is on the screen: C console, M monitor, S sound window, B the menu bars of the first two.
    static std::string Shown() {
        std::string text;
        text += Console().Visible() ? "C" : "";
        text += Monitor().Visible() ? "M" : "";
        text += Sound().Visible() ? "S" : "";
        text += Console().MenuBarVisible() ? "B" : "";
        text += Monitor().MenuBarVisible() ? "B" : "";
        return text;
    }
};

TEST_F(WindowsTest, OneKeyHidesTheConsoleAndBringsItBack) {
    for (const std::string full : {"false", "true"}) {
        StartWith({{2, "false"}, {4, full}});
        for (const char* all : {"CMBB", "CMSBB"}) { // the sound window only while a sound is open
            EXPECT_EQ(Shown(), all);
            Choose("AltX_Key");
            EXPECT_EQ(Shown(), full == "true" ? "M" : "MBB");
            EXPECT_EQ(Console().AltX_Key()->Text(), "コンソールウィンドウを表示する");
            Monitor().ReportMenuChosen("AltX_Key");
            EXPECT_EQ(Shown(), all);
            EXPECT_EQ(Console().AltX_Key()->Text(), "コンソールウィンドウを隠す");
            OpenSound(0);
        }
        EXPECT_TRUE(Sound().QTM()->Running()) << "the show goes on";
        End();
    }
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
    Do([] { Sound().SetWidth(-5); });
    EXPECT_EQ(Sound().Width(), 0) << "no window is less than none";
    SetScreens(1);
    Console().ReportMoved(10, 20);
    EXPECT_EQ(Monitor().Left(), 10) << "the second display has gone";
    Do([] { Console().Setting_Data.Set(8, "true"); });
    Console().ReportMoved(30, 40);
    EXPECT_FALSE(Monitor().Visible());
    EXPECT_EQ(Monitor().Left(), 10);
}

TEST_F(WindowsTest, PagesAndActivationPutTheFocusOnTheListInFront) {
    StartWith({});
    OpenSound(0);
    const std::function<void()> events[] = {
        [] { Console().ReportActivated(); }, [] { Console().ReportDeactivated(); },
        [] { Console().ReportRestored(); }, [] { Sound().ReportActivated(); }};
    for (const std::int32_t page : {0, 1, 0}) {
        const std::string list = page == 0 ? "StrGrid" : "mStrGrid";
        Console().ListTab()->ReportPage(page);
        EXPECT_EQ(Console().FocusControl()->Name(), list);
        for (const auto& event : events) {
            Do([] { Console().Rate()->SetFocus(); });
            event();
            EXPECT_EQ(Console().FocusControl()->Name(), list);
        }
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
