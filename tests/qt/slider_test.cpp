#include "contract/slider.h"
#include "qt_test.h"

namespace kirolane::tests {

namespace {

/// The position slider, told of at the end of a drag, and the speed slider, told of at each step.
class SliderTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        Do([&] {
            Bar()->SetMaximum(100);
            Bar()->SetEnabled(true);
        });
        for (const char* name : {"QTM_PosBar", "Rate"}) {
            auto* slider = Get<Slider>(name).operator->();
            slider->OnValueChanged = [this, slider] { m_log.push_back(std::to_string(slider->Value())); };
            slider->OnMouseDown = [this](std::int32_t, std::int32_t) {
                m_log.push_back("down");
                return m_keep;
            };
            slider->OnMouseUp = [this](std::int32_t, std::int32_t) { m_log.push_back("up"); };
        }
        m_bar = Find<QSlider>("Mainform", "QTM_PosBar");
    }
    static Ref<Slider> Bar() { return Get<Slider>("QTM_PosBar"); }
    static QPoint Thumb(const QSlider* slider, int value) {
        const int span = slider->width() - 16;
        return {8 + span * (value - slider->minimum()) / (slider->maximum() - slider->minimum()), 8};
    }
    static void Drag(QSlider* slider, std::initializer_list<int> values) {
        QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, Thumb(slider, slider->value()));
        for (const int value : values)
            QTest::mouseMove(slider, Thumb(slider, value));
    }
    static void Release(QSlider* slider, int value) {
        QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, Thumb(slider, value));
    }
    Names TakeLog() { return std::exchange(m_log, {}); }

    QSlider* m_bar = nullptr;
    Names m_log;
    bool m_keep = false;
};

TEST_F(SliderTest, WithoutLiveScrollADragIsToldAtItsEndAndTheThumbIsTheHandsUntilThen) {
    Drag(m_bar, {20, 60});
    const int held = m_bar->sliderPosition();
    EXPECT_NEAR(held, 60, 2);
    EXPECT_EQ(TakeLog(), Names());
    for (const int tick : {7, 8, 8})
        Do([&] { Bar()->SetValue(tick); });
    Do([] { Bar()->SetMaximum(200); });
    EXPECT_EQ(m_bar->sliderPosition(), held);
    EXPECT_EQ(Bar()->Value(), 8);
    EXPECT_EQ(TakeLog(), (Names{"7", "8", "8"})) << "the program's own writes are told, each of them";
    Release(m_bar, held);
    EXPECT_EQ(TakeLog(), (Names{"down", std::to_string(held), "up"}));

    Click(m_bar, Thumb(m_bar, 180));
    EXPECT_EQ(TakeLog(), (Names{"down", std::to_string(held + 20), "up"})) << "one page";
    Click(m_bar, Thumb(m_bar, held + 20));
    EXPECT_EQ(TakeLog(), (Names{"down", "up"})) << "nothing changed";
    QAccessible::queryAccessibleInterface(m_bar)->valueInterface()->setCurrentValue(33);
    EXPECT_EQ(TakeLog(), Names{"33"}) << "by an assistive tool";
    Do([] { Bar()->SetMaximum(5); });
    EXPECT_EQ(Bar()->Value(), 5);
    EXPECT_EQ(TakeLog(), Names());
}

TEST_F(SliderTest, WithLiveScrollEveryStepIsToldAndAPressThatTheLogicKeepsMovesNothing) {
    auto* rate = Find<QSlider>("Mainform", "Rate");
    Drag(rate, {6, 8});
    Release(rate, 8);
    EXPECT_EQ(TakeLog(), (Names{"down", "6", "8", "up"}));
    m_keep = true;
    for (QSlider* slider : {rate, m_bar}) {
        Click(slider, Thumb(slider, slider->maximum()));
        EXPECT_EQ(TakeLog(), (Names{"down", "up"}));
    }
    EXPECT_EQ(m_bar->value(), 0);
}

TEST_F(SliderTest, TheLogicHasTheLastWord) {
    Bar()->OnValueChanged = [] { Bar()->OnValueChanged = nullptr, Bar()->SetValue(9); };
    Drag(m_bar, {60});
    Release(m_bar, 60);
    EXPECT_EQ(m_bar->value(), 9);
    TakeLog();

    Drag(m_bar, {90});
    Do([] { Bar()->SetEnabled(false); });
    Do([] { Bar()->SetEnabled(true); });
    Release(m_bar, 90);
    EXPECT_EQ(m_bar->value(), 9);
    EXPECT_EQ(TakeLog(), Names()) << "disabled under the hand: nothing is told";
}

TEST_F(SliderTest, TheLeftButtonAloneMovesTheThumb) {
    const auto send = [&](QEvent::Type type, int value, Qt::MouseButton button, Qt::MouseButtons down) {
        const QPointF at = Thumb(m_bar, value);
        QMouseEvent event(type, at, m_bar->mapToGlobal(at), button, down, Qt::NoModifier);
        QCoreApplication::sendEvent(m_bar, &event);
    };
    const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
    send(QEvent::MouseButtonPress, 0, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonPress, 0, Qt::RightButton, both);
    send(QEvent::MouseMove, 100, Qt::NoButton, both);
    send(QEvent::MouseButtonRelease, 100, Qt::LeftButton, Qt::RightButton);
    EXPECT_EQ(TakeLog(), (Names{"down", "100", "up"}));
    send(QEvent::MouseMove, 0, Qt::NoButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, 0, Qt::RightButton, Qt::NoButton);
    QTest::mouseClick(m_bar, Qt::MiddleButton, Qt::NoModifier, Thumb(m_bar, 0));
    EXPECT_EQ(TakeLog(), Names());
}

} // namespace

} // namespace kirolane::tests
