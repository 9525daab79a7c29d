#include "logic_test.h"

#include <functional>

namespace kirolane::tests {

class WindowsTest : public LogicTest {
protected:
    void StartWith(const Lines& lines, int screens = 1) {
        SetScreens(screens);
        StartWithFiles({"a"}, lines);
    }
    /// What is on the screen: C console, M monitor, S sound window, B the menu bars of the first two.
    static std::string Shown() {
        const auto mark = [](bool shown, const char* sign) { return std::string(shown ? sign : ""); };
        return mark(Console().Visible(), "C") + mark(Monitor().Visible(), "M") +
               mark(Sound().Visible(), "S") + mark(Console().MenuBarVisible(), "B") +
               mark(Monitor().MenuBarVisible(), "B");
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
        Lines atTheStart;
        int screens;
        Lines saved = {}; // after the start
        int screensThen = screens;
        bool follows = true;
        bool visible = true;
    } cases[] = {
        {{{2, "false"}}, 1},
        {{{2, "false"}}, 2},
        {{{2, "false"}, {4, "true"}}, 1}, // as values; the window covers its screen
        {.atTheStart = {{2, "true"}}, .screens = 2, .follows = false},
        {{{2, "true"}}, 2, {}, 1}, // the second display has gone
        {.atTheStart = {{2, "x"}}, .screens = 1, .follows = false},
        {{{2, "false"}, {8, "true"}}, 1, {}, 1, false, false},
        {{{2, "true"}}, 2, {{8, "true"}}, 1, false, false},
    };
    for (const auto& c : cases) {
        StartWith(c.atTheStart, c.screens);
        const Point before = {Monitor().Left(), Monitor().Top()};
        SetScreens(c.screensThen);
        for (const auto& [n, text] : c.saved)
            Console().Setting_Data.Set(n, text);
        Console().ReportMoved(-300, 900);
        EXPECT_EQ((Point{Monitor().Left(), Monitor().Top()}),
                  c.follows ? (Point{-300, 900 + 420 + 6}) : before);
        EXPECT_EQ(Monitor().Visible(), c.visible);
        End();
    }
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
    EXPECT_TRUE(Console().QTM()->Running());
    EXPECT_EQ(TheRuntime().Forms().All().size(), 4U);
    Advance(1000); // the tick names it
    EXPECT_EQ(TheRuntime().Forms().All().size(), 5U);
    EXPECT_TRUE(Monitor().QTM()->Movie().IsNil());
    Open(0);
    EXPECT_TRUE(Monitor().QTM()->Running());
    EXPECT_EQ(Monitor().QTM()->Width(), 800);
    Choose("FileQuit");
    EXPECT_TRUE(TheRuntime().Ended()) << "the console leaves it to the runtime";
}

} // namespace kirolane::tests
