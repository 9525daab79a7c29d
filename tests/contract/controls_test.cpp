#include "contract/progressbar.h"
#include "contract/screen.h"
#include "contract/slider.h"
#include "contract/tabpanel.h"
#include "contract/timer.h"
#include "support/console_test.h"

namespace kirolane::tests {

using Values = std::vector<std::int32_t>;

using ControlsTest = ConsoleTest;

TEST_F(ControlsTest, ASliderFiresOnEveryWriteAndForAPersonOnlyOnAChange) {
    auto& bar = Get<Slider>("Bar");
    Values values;
    bar.OnValueChanged = [&] { values.push_back(bar.Value()); };
    for (const std::int32_t value : {5, 5, 99, -1})
        bar.SetValue(value);
    EXPECT_EQ(std::exchange(values, {}), (Values{5, 5, 10, 2}));
    bar.SetValue(8);
    values.clear();
    bar.SetMaximum(4);
    EXPECT_EQ(bar.Value(), 4);
    EXPECT_TRUE(values.empty()) << "a lower maximum takes the value along silently";
    for (const std::int32_t value : {4, 3, 3, 50})
        bar.ReportValue(value);
    EXPECT_EQ(std::exchange(values, {}), (Values{3, 4}));
    bar.OnMouseDown = [&](std::int32_t x, std::int32_t y) {
        values.push_back(10 * x + y);
        bar.ReportValue(2); // what a press causes comes after its value
        return x == 9;
    };
    bar.ReportPressAndValue(1, 2, 3);
    EXPECT_EQ(values, (Values{12, 3}));
    Advance(1);
    EXPECT_EQ(std::exchange(values, {}), (Values{12, 3, 2}));
    bar.ReportPressAndValue(9, 2, 3);
    EXPECT_EQ(std::exchange(values, {}), Values{92}) << "the handler keeps the press";
    bar.SetEnabled(false);
    bar.ReportValue(3);
    bar.ReportPressAndValue(1, 2, 3);
    EXPECT_TRUE(values.empty());
    bar.SetValue(2);
    EXPECT_EQ(values, Values{2}) << "the program may write a disabled slider";
}

TEST_F(ControlsTest, ValuesAreHeldWithinTheirRangesAndTabsFireOnlyOnAChange) {
    auto& tabs = Get<TabPanel>("Tabs");
    Values pages;
    tabs.OnChange = [&] { pages.push_back(tabs.Value()); };
    tabs.ReportPage(0);
    tabs.ReportPage(1);
    tabs.SetValue(7);
    EXPECT_EQ(pages, Values{1});
    for (const auto& [written, held] : {std::pair{1000, 100}, {-1, 0}}) {
        Get<ProgressBar>("Progress").SetValue(written);
        EXPECT_EQ(Get<ProgressBar>("Progress").Value(), held);
    }
    Get<Slider>("Bar").SetWidth(-5);
    EXPECT_EQ(Get<Slider>("Bar").Width(), 0);
}

TEST_F(ControlsTest, MouseEventsReachEnabledControlsAndSayWhetherTheyKeepThePress) {
    auto& bar = Get<ProgressBar>("Progress");
    Values heights;
    EXPECT_FALSE(bar.ReportMouseDown(1, 2));
    bar.OnMouseDown = [](std::int32_t, std::int32_t y) { return y == 2; };
    bar.OnMouseMove = [&](std::int32_t, std::int32_t) { heights.push_back(Form().MouseY()); };
    EXPECT_TRUE(bar.ReportMouseDown(1, 2));
    EXPECT_FALSE(bar.ReportMouseDown(1, 3));
    bar.ReportMouseMove(1, 2, 42);
    bar.SetEnabled(false);
    bar.ReportMouseMove(1, 2, 43);
    EXPECT_FALSE(bar.ReportMouseDown(1, 2));
    EXPECT_EQ(heights, Values{42});
}

TEST_F(ControlsTest, OnlyATimerThatIsOnFires) {
    int ticks = 0;
    Get<Timer>("Clock").OnAction = [&] { ++ticks; };
    Get<Timer>("Off").OnAction = [] { FAIL() << "a timer that is off"; };
    Advance(3000);
    EXPECT_EQ(ticks, 3);
}

TEST_F(ControlsTest, ScreensAreReadAfreshAndMirroredOnesCountOnce) {
    EXPECT_EQ(ScreenCount(), 1);
    Windows().SetScreens({{0, 0, 1440, 900}, {0, 0, 1440, 900}, {1440, 0, 1920, 1080}});
    EXPECT_EQ(ScreenCount(), 2);
    EXPECT_EQ(Screen(1).Left(), 1440);
    for (const int none : {-1, 2})
        EXPECT_THROW(Screen{none}, OutOfBoundsException);
}

} // namespace kirolane::tests
