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
    const std::pair<double, const char*> rates[] = {
        {0.75, "Rate：−５"}, {0.8, "Rate：−４"},   {0.85, "Rate：−３"},  {0.9, "Rate：−２"},
        {0.95, "Rate：−１"}, {1.0, "Rate： ±０"},  {1.05, "Rate：＋１"}, {1.1, "Rate：＋２"},
        {1.2, "Rate：＋３"}, {1.24, "Rate：＋４"}, {1.35, "Rate：＋５"},
    };
    Expect(5, 1.0, "Rate：±０");
    for (int i = 6; i <= 10; ++i) {
        Choose("SpeedUp");
        Expect(i, rates[i].first, rates[i].second);
    }
    Choose("SpeedUp");
    Expect(10, 1.35, "Rate：＋５");
    for (int i = 9; i >= 0; --i) {
        Choose("SpeedDown");
        Expect(i, rates[i].first, rates[i].second);
    }
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
