// Sliders: who moves the thumb, and when that is told.

#include "platform/slider.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAccessible>
#include <QSlider>
#include <QWheelEvent>

namespace kirolane::tests {

namespace {

class SliderTest : public QtTest {
protected:
    void SetUp() override {
        m_console = StartWith<ConsoleShow>();
        Do([&] {
            Bar()->SetMaximum(100);
            Bar()->SetEnabled(true);
        });
        for (const char* name : {"QTM_PosBar", "Rate"}) {
            auto* slider = m_console->Control<Slider>(name).operator->();
            slider->OnValueChanged = [this, slider] { m_log.push_back(std::to_string(slider->Value())); };
            slider->OnMouseDown = [this](std::int32_t, std::int32_t) {
                m_log.push_back("down");
                return m_keep;
            };
            slider->OnMouseUp = [this](std::int32_t, std::int32_t) { m_log.push_back("up"); };
        }
    }
    Ref<Slider> Bar() { return m_console->Control<Slider>("QTM_PosBar"); }
    static QSlider* BarWidget() { return Find<QSlider>("Mainform", "QTM_PosBar"); }
    static QPoint Thumb(const QSlider* slider, int value) {
        const int span = slider->width() - 16;
        return {8 + span * (value - slider->minimum()) / (slider->maximum() - slider->minimum()), 8};
    }
    std::vector<std::string> TakeLog() { return std::exchange(m_log, {}); }

    Ref<ConsoleShow> m_console;
    std::vector<std::string> m_log;
    bool m_keep = false;
};

using Names = std::vector<std::string>;

TEST_F(SliderTest, WithoutLiveScrollADragIsToldAtItsEnd) {
    QSlider* bar = BarWidget();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 0));
    QTest::mouseMove(bar, Thumb(bar, 20));
    QTest::mouseMove(bar, Thumb(bar, 50));
    EXPECT_EQ(TakeLog(), Names{"down"});
    EXPECT_EQ(Bar()->Value(), 0);
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 50));
    const auto log = TakeLog();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_NEAR(std::stoi(log[0]), 50, 2);
    EXPECT_EQ(log[1], "up");
    EXPECT_EQ(bar->value(), Bar()->Value());
}

TEST_F(SliderTest, APressBesideTheThumbIsToldAtItsEndToo) {
    QSlider* bar = BarWidget();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 80));
    EXPECT_EQ(TakeLog(), Names{"down"});
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 80));
    EXPECT_EQ(TakeLog(), (Names{"20", "up"})) << "one page";
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 20));
    EXPECT_EQ(TakeLog(), (Names{"down", "up"})) << "nothing changed";
}

TEST_F(SliderTest, WritesOfTheLogicWaitForTheHand) {
    QSlider* bar = BarWidget();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 0));
    QTest::mouseMove(bar, Thumb(bar, 60));
    const int held = bar->sliderPosition();
    Do([&] { Bar()->SetValue(7); });
    EXPECT_EQ(bar->sliderPosition(), held) << "the thumb stays with the hand";
    TakeLog();
    Bar()->OnValueChanged = [&] { Bar()->OnValueChanged = nullptr, Bar()->SetValue(9); }; // the logic objects
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 60));
    EXPECT_EQ(bar->value(), 9);

    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 9));
    QTest::mouseMove(bar, Thumb(bar, 90));
    Do([&] { Bar()->SetEnabled(false); });
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 90));
    Do([&] { Bar()->SetEnabled(true); });
    EXPECT_EQ(bar->value(), 9) << "disabled under the hand: nothing is set";
}

TEST_F(SliderTest, WithLiveScrollEveryStepIsTold) {
    auto* rate = Find<QSlider>("Mainform", "Rate");
    QTest::mousePress(rate, Qt::LeftButton, Qt::NoModifier, Thumb(rate, 5));
    QTest::mouseMove(rate, Thumb(rate, 6));
    QTest::mouseMove(rate, Thumb(rate, 8));
    QTest::mouseRelease(rate, Qt::LeftButton, Qt::NoModifier, Thumb(rate, 8));
    EXPECT_EQ(TakeLog(), (Names{"down", "6", "8", "up"}));
}

TEST_F(SliderTest, APressThatTheLogicKeepsMovesNothing) {
    m_keep = true;
    QSlider* bar = BarWidget();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 80));
    EXPECT_EQ(TakeLog(), (Names{"down", "up"}));
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(SliderTest, AWheelChangesNothingAndAnAssistiveToolDoes) {
    QSlider* bar = BarWidget();
    QWheelEvent wheel(QPointF(50, 8), bar->mapToGlobal(QPointF(50, 8)), QPoint(), QPoint(0, 240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(bar, &wheel);
    EXPECT_EQ(TakeLog(), Names());
    QAccessible::queryAccessibleInterface(bar)->valueInterface()->setCurrentValue(33);
    EXPECT_EQ(TakeLog(), Names{"33"});
    EXPECT_EQ(Bar()->Value(), 33);
}

} // namespace

} // namespace kirolane::tests
