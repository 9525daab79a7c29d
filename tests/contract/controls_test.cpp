#include "contract/progressbar.h"
#include "contract/screen.h"
#include "contract/slider.h"
#include "contract/tabpanel.h"
#include "contract/timer.h"
#include "support/contract_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

class ControlsTest : public tests::ContractTest {
protected:
    ControlsTest() : m_form(StartWith<tests::ConsoleForm>()) {}
    template <class T> T& Get(const char* name) { return *m_form->Control<T>(name); }
    tests::ConsoleForm& Form() { return *m_form; }

private:
    Ref<tests::ConsoleForm> m_form;
};

TEST_F(ControlsTest, AreFoundByNameAndClass) {
    EXPECT_EQ(Get<Slider>("Bar").Path(), "Console.Bar");
    EXPECT_TRUE(Form().Control<Slider>("Nothing").IsNil());
    EXPECT_TRUE(Form().Control<Slider>("Label").IsNil());
    EXPECT_THROW((void)Form().Control<Slider>("Nothing")->Value(), NilObjectException);
}

TEST_F(ControlsTest, ASliderFiresOnEveryWriteAndForAPersonOnlyOnAChange) {
    auto& bar = Get<Slider>("Bar");
    std::vector<std::int32_t> values;
    bar.OnValueChanged = [&] { values.push_back(bar.Value()); };
    for (const std::int32_t value : {5, 5, 99, -1})
        bar.SetValue(value);
    EXPECT_EQ(std::exchange(values, {}), (std::vector<std::int32_t>{5, 5, 10, 2}));
    bar.SetValue(8);
    values.clear();
    bar.SetMaximum(4);
    EXPECT_EQ(bar.Value(), 4);
    EXPECT_TRUE(values.empty()) << "a lower maximum takes the value along silently";
    for (const std::int32_t value : {4, 3, 3, 50})
        bar.ReportValue(value);
    EXPECT_EQ(std::exchange(values, {}), (std::vector<std::int32_t>{3, 4}));
    std::int32_t pressed = 0; // a press that has ended is one event: what it causes comes after its value
    bar.OnMouseDown = [&](std::int32_t x, std::int32_t y) {
        pressed = 10 * x + y;
        bar.ReportValue(2);
        return x == 9;
    };
    bar.ReportPressAndValue(1, 2, 3);
    EXPECT_EQ(pressed, 12);
    EXPECT_EQ(values, std::vector<std::int32_t>{3});
    Advance(1);
    EXPECT_EQ(std::exchange(values, {}), (std::vector<std::int32_t>{3, 2}));
    bar.ReportPressAndValue(9, 2, 3);
    EXPECT_TRUE(values.empty()) << "the handler keeps the press";
    bar.SetEnabled(false);
    bar.ReportValue(2);
    bar.ReportPressAndValue(1, 2, 3);
    EXPECT_TRUE(values.empty());
    bar.SetValue(2);
    EXPECT_EQ(values.size(), 1U) << "the program may write a disabled slider";
}

TEST_F(ControlsTest, TabsFireOnlyOnAChange) {
    auto& tabs = Get<TabPanel>("Tabs");
    int changes = 0;
    tabs.OnChange = [&] { ++changes; };
    EXPECT_EQ(tabs.Tabs(), (std::vector<std::string>{"One", "Two"}));
    tabs.ReportPage(0);
    EXPECT_EQ(changes, 0);
    tabs.ReportPage(1);
    tabs.SetValue(7);
    EXPECT_EQ(tabs.Value(), 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(ControlsTest, PlainValuesAreHeldAndClamped) {
    Get<ProgressBar>("Progress").SetValue(1000);
    EXPECT_EQ(Get<ProgressBar>("Progress").Value(), 100);
    Get<ProgressBar>("Progress").SetValue(-1);
    EXPECT_EQ(Get<ProgressBar>("Progress").Value(), 0);
    Get<Slider>("Bar").SetWidth(-5);
    EXPECT_EQ(Get<Slider>("Bar").Width(), 0);
}

TEST_F(ControlsTest, MouseEventsReachEnabledControlsAndSayWhetherTheyKeepThePress) {
    auto& bar = Get<ProgressBar>("Progress");
    std::vector<std::int32_t> heights;
    EXPECT_FALSE(bar.ReportMouseDown(1, 2));
    bar.OnMouseDown = [](std::int32_t, std::int32_t y) { return y == 2; };
    bar.OnMouseMove = [&](std::int32_t, std::int32_t) { heights.push_back(Form().MouseY()); };
    EXPECT_TRUE(bar.ReportMouseDown(1, 2));
    EXPECT_FALSE(bar.ReportMouseDown(1, 3));
    bar.ReportMouseMove(1, 2, 42);
    bar.SetEnabled(false);
    bar.ReportMouseMove(1, 2, 43);
    EXPECT_FALSE(bar.ReportMouseDown(1, 2));
    EXPECT_EQ(heights, std::vector<std::int32_t>{42});
}

TEST_F(ControlsTest, ATimerFiresEveryPeriodAndDoesNotRepeatWhatItMissed) {
    std::vector<std::int64_t> times;
    Get<Timer>("Clock").OnAction = [&] { times.push_back(Clock().Now()); };
    Get<Timer>("Off").OnAction = [] { FAIL() << "a timer that is off"; };
    Advance(999);
    EXPECT_TRUE(times.empty());
    Advance(2001);
    EXPECT_EQ(std::exchange(times, {}), (std::vector<std::int64_t>{1000, 2000, 3000}));
    Get<Timer>("Clock").OnAction = [&] {
        times.push_back(Clock().Now());
        if (times.size() == 1)
            Clock().Leap(3500); // a handler that takes its time
    };
    Advance(6000);
    EXPECT_EQ(times, (std::vector<std::int64_t>{4000, 7500, 8000, 9000})) << "one late, then in step";
}

TEST_F(ControlsTest, ScreensAreReadAfreshAndMirroredOnesCountOnce) {
    EXPECT_EQ(ScreenCount(), 1);
    Windows().SetScreens({{0, 0, 1440, 900}, {1440, 0, 1920, 1080}, {0, 0, 1440, 900}});
    EXPECT_EQ(ScreenCount(), 2);
    EXPECT_EQ(Screen(1).Left(), 1440);
    EXPECT_EQ(Screen(1).Height(), 1080);
    EXPECT_THROW(Screen(2), OutOfBoundsException);
    EXPECT_THROW(Screen(-1), OutOfBoundsException);
}

} // namespace
} // namespace kirolane
