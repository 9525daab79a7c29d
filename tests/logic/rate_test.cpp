#include "logic_test.h"

namespace kirolane::tests {

class RateTest : public LogicTest {
protected:
    void SetUp() override { StartWithMedia({"a.mov", "b.mov"}); }

    static void Expect(std::int32_t value, double factor, const char* caption) {
        EXPECT_EQ(Console().Rate()->Value(), value);
        EXPECT_EQ(Console().Rate_Flag, factor);
        EXPECT_EQ(Console().QTM()->Rate(), factor);
        EXPECT_EQ(Monitor().QTM()->Rate(), factor);
        EXPECT_EQ(Console().RateText()->Caption(), caption);
        EXPECT_EQ(Sound().QTM()->Rate(), 1.0);
    }
};

TEST_F(RateTest, KeysStepThroughTheElevenSpeeds) {
    Expect(5, 1.0, "Rate：±０");
    for (int i = 0; i < 6; ++i)
        Choose("SpeedUp");
    Expect(10, 1.35, "Rate：＋５");
    for (int i = 0; i < 5; ++i)
        Choose("SpeedDown");
    Expect(5, 1.0, "Rate： ±０");
    for (int i = 0; i < 6; ++i)
        Choose("SpeedDown");
    Expect(0, 0.75, "Rate：−５");
}

TEST_F(RateTest, TheSliderActsWhileDraggedAndOnceMoreOnRelease) {
    Open(0);
    Choose("PlayStatusChangeKey");
    Console().Rate()->ReportValue(9);
    Expect(9, 1.24, "Rate：＋４");
    Do([] {
        Console().QTM()->SetRate(1.0);
        Console().RateText()->SetText("x");
    });
    Console().Rate()->ReportMouseUp(0, 0);
    Expect(9, 1.24, "Rate：＋４");
    EXPECT_FALSE(Console().QTM()->Running());
}

TEST_F(RateTest, TheSpeedHoldsForTheNextMovie) {
    Choose("SpeedDown");
    Open(0);
    Open(1);
    Advance(1000);
    EXPECT_NEAR(Monitor().QTM()->Position(), 0.95, 1e-9);
    Expect(4, 0.95, "Rate：−１");
}

} // namespace kirolane::tests
