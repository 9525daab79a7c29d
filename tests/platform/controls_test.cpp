#include "platform/bevelbutton.h"
#include "platform/checkbox.h"
#include "platform/editfield.h"
#include "platform/keyboard.h"
#include "platform/popupmenu.h"
#include "platform/progressbar.h"
#include "platform/pushbutton.h"
#include "platform/screen.h"
#include "platform/slider.h"
#include "platform/statictext.h"
#include "platform/tabpanel.h"
#include "platform/timer.h"
#include "platform/updownarrows.h"
#include "support/platform_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

class ControlsTest : public tests::PlatformTest {
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
    EXPECT_EQ(Form().Controls().size(), std::size(tests::kConsoleControls));
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
    bar.SetEnabled(false);
    bar.ReportValue(2);
    EXPECT_TRUE(values.empty());
    bar.SetValue(2);
    EXPECT_EQ(values.size(), 1U) << "the program may write a disabled slider";
}

TEST_F(ControlsTest, ACheckBoxFiresWhenChangedByAClickOrByAWrite) {
    auto& box = Get<CheckBox>("Box");
    int actions = 0;
    box.OnAction = [&] { ++actions; };
    box.SetValue(false);
    EXPECT_EQ(actions, 0);
    box.SetValue(true);
    EXPECT_EQ(actions, 1);
    box.ReportClick();
    EXPECT_FALSE(box.Value());
    EXPECT_EQ(actions, 2);
    box.SetEnabled(false);
    box.ReportClick();
    EXPECT_EQ(actions, 2);
}

TEST_F(ControlsTest, TabsAndChoicesFireOnlyOnAChange) {
    auto& tabs = Get<TabPanel>("Tabs");
    auto& choice = Get<PopupMenu>("Choice");
    int changes = 0;
    tabs.OnChange = choice.OnChange = [&] { ++changes; };
    EXPECT_EQ(tabs.Tabs(), (std::vector<std::string>{"One", "Two"}));
    tabs.ReportPage(0);
    EXPECT_EQ(changes, 0);
    tabs.ReportPage(1);
    tabs.SetValue(7);
    EXPECT_EQ(tabs.Value(), 1);
    EXPECT_EQ(changes, 1);

    choice.SetListIndex(0); // no row yet
    EXPECT_EQ(choice.ListIndex(), -1);
    choice.AddRow("a");
    choice.ReportChoice(0);
    choice.ReportChoice(0);
    EXPECT_EQ(changes, 2);
}

TEST_F(ControlsTest, ButtonsAndArrowsFireOnceAClickIfEnabled) {
    std::string seen;
    Get<PushButton>("Push").OnAction = [&] { seen += 'p'; };
    Get<BevelButton>("Bevel").OnAction = [&] { seen += 'b'; };
    Get<UpDownArrows>("Arrows").OnUp = [&] { seen += 'u'; };
    Get<UpDownArrows>("Arrows").OnDown = [&] { seen += 'd'; };
    Get<BevelButton>("Bevel").ReportClick(); // disabled by design
    Get<BevelButton>("Bevel").SetEnabled(true);
    Get<BevelButton>("Bevel").SetValue(true);
    Get<PushButton>("Push").ReportClick();
    Get<BevelButton>("Bevel").ReportClick();
    Get<UpDownArrows>("Arrows").ReportUp();
    Get<UpDownArrows>("Arrows").ReportDown();
    EXPECT_EQ(seen, "pbud");
    EXPECT_TRUE(Get<BevelButton>("Bevel").Value()) << "a click leaves the pressed look";
}

TEST_F(ControlsTest, PlainValuesAreHeldAndClamped) {
    Get<ProgressBar>("Progress").SetValue(1000);
    EXPECT_EQ(Get<ProgressBar>("Progress").Value(), 100);
    Get<ProgressBar>("Progress").SetValue(-1);
    EXPECT_EQ(Get<ProgressBar>("Progress").Value(), 0);
    Get<StaticText>("Label").SetText("00：00：01");
    EXPECT_EQ(Get<StaticText>("Label").Caption(), "00：00：01");
    Get<EditField>("Field").SetText("\xFF");
    EXPECT_EQ(Get<EditField>("Field").Text(), "\xFF");
    Get<EditField>("Field").ReportText("typed");
    EXPECT_EQ(Get<EditField>("Field").Text(), "typed");
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

TEST_F(ControlsTest, HeldKeysAreRead) {
    EXPECT_FALSE(Keyboard::AsyncKeyDown(Keyboard::kLeftArrow));
    Windows().HoldKey(Keyboard::kLeftArrow);
    EXPECT_TRUE(Keyboard::AsyncKeyDown(Keyboard::kLeftArrow));
    EXPECT_FALSE(Keyboard::AsyncKeyDown(Keyboard::kRightArrow));
}

} // namespace
} // namespace kirolane
