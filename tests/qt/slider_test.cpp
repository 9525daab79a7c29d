// Sliders: who moves the thumb, and when that is told.

#include "contract/slider.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QSlider>

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

TEST_F(SliderTest, WithoutLiveScrollADragIsToldAtItsEndAndTheThumbIsTheHandsUntilThen) {
    QSlider* bar = BarWidget();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 0));
    QTest::mouseMove(bar, Thumb(bar, 20));
    QTest::mouseMove(bar, Thumb(bar, 60));
    const int held = bar->sliderPosition();
    EXPECT_NEAR(held, 60, 2);
    EXPECT_EQ(TakeLog(), Names());
    for (const int tick : {7, 8}) {
        Do([&] { Bar()->SetValue(tick); });
        EXPECT_EQ(bar->sliderPosition(), held);
        EXPECT_EQ(Bar()->Value(), tick);
    }
    Do([&] { Bar()->SetMaximum(200); });
    EXPECT_EQ(bar->sliderPosition(), held);
    TakeLog();
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, held));
    EXPECT_EQ(TakeLog(), (Names{"down", std::to_string(held), "up"}));

    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 180));
    EXPECT_EQ(TakeLog(), (Names{"down", std::to_string(held + 20), "up"})) << "one page";
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, held + 20));
    EXPECT_EQ(TakeLog(), (Names{"down", "up"})) << "nothing changed";
}

TEST_F(SliderTest, TheLogicHasTheLastWord) {
    QSlider* bar = BarWidget();
    Bar()->OnValueChanged = [&] { Bar()->OnValueChanged = nullptr, Bar()->SetValue(9); };
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 0));
    QTest::mouseMove(bar, Thumb(bar, 60));
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 60));
    EXPECT_EQ(bar->value(), 9);
    TakeLog();

    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 9));
    QTest::mouseMove(bar, Thumb(bar, 90));
    Do([&] { Bar()->SetEnabled(false); });
    Do([&] { Bar()->SetEnabled(true); });
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, Thumb(bar, 90));
    EXPECT_EQ(bar->value(), 9);
    EXPECT_EQ(TakeLog(), Names()) << "disabled under the hand: nothing is told";
}

TEST_F(SliderTest, TheLeftButtonAloneMovesTheThumb) {
    for (const char* name : {"QTM_PosBar", "Rate"}) {
        auto* slider = Find<QSlider>("Mainform", name);
        const int last = slider->maximum();
        for (const auto button : {Qt::MiddleButton, Qt::RightButton})
            QTest::mouseClick(slider, button, Qt::NoModifier, Thumb(slider, last));
        EXPECT_EQ(TakeLog(), Names()) << name;

        const auto send = [&](QEvent::Type type, int value, Qt::MouseButton button, Qt::MouseButtons down) {
            const QPointF at = Thumb(slider, value);
            QMouseEvent event(type, at, slider->mapToGlobal(at), button, down, Qt::NoModifier);
            QCoreApplication::sendEvent(slider, &event);
        };
        const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
        send(QEvent::MouseButtonPress, slider->value(), Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseButtonPress, slider->value(), Qt::RightButton, both);
        send(QEvent::MouseMove, last, Qt::NoButton, both);
        send(QEvent::MouseButtonRelease, last, Qt::LeftButton, Qt::RightButton);
        EXPECT_EQ(TakeLog(), (Names{"down", std::to_string(last), "up"})) << name;
        send(QEvent::MouseMove, 0, Qt::NoButton, Qt::RightButton);
        send(QEvent::MouseButtonRelease, 0, Qt::RightButton, Qt::NoButton);
        EXPECT_EQ(TakeLog(), Names()) << name;
    }
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

TEST_F(SliderTest, AnAssistiveToolMovesIt) {
    QSlider* bar = BarWidget();
    QAccessible::queryAccessibleInterface(bar)->valueInterface()->setCurrentValue(33);
    EXPECT_EQ(TakeLog(), Names{"33"});
    EXPECT_EQ(Bar()->Value(), 33);
}

} // namespace

} // namespace kirolane::tests
