#include "twin_test.h"

namespace kirolane::tests {

class RateTest : public TwinTest {
protected:
    void SetUp() override { StartWithFiles({"a", "b"}); }

    static void Expect(std::int32_t value, double factor, const char* caption) {
        EXPECT_EQ(In<Slider>("Rate")->Value(), value);
        EXPECT_EQ(Either(Console().Rate_Flag, Console().mRate_Flag), factor);
        EXPECT_EQ(Text("RateText"), caption);
        EXPECT_EQ(Player()->Rate(), factor);
        EXPECT_EQ(Monitor().QTM()->Rate(), Either(factor, 1.0));
        EXPECT_EQ(Either(Sound().QTM(), Console().QTM())->Rate(), 1.0) << "the other transport's";
    }
};

INSTANTIATE_TEST_SUITE_P(Of, RateTest, ::testing::Bool(), TwinName);

TEST_P(RateTest, KeysStepThroughTheElevenSpeeds) {
    Expect(5, 1.0, "Rate：±０");
    const auto press = [&](const char* key, int times) {
        for (int i = 0; i < times; ++i)
            Act(key);
    };
    press("SpeedUp", 6);
    Expect(10, 1.35, "Rate：＋５");
    press("SpeedDown", 5);
    Expect(5, 1.0, "Rate： ±０");
    press("SpeedDown", 6);
    Expect(0, 0.75, "Rate：−５");
}

TEST_P(RateTest, TheSliderActsWhileDraggedAndOnceMoreOnReleaseAndHoldsForTheNextFile) {
    Act("open 0");
    Act("PlayStatusChangeKey");
    In<Slider>("Rate")->ReportValue(9);
    Expect(9, 1.24, "Rate：＋４");
    Do([] {
        Player()->SetRate(1.0);
        In<StaticText>("RateText")->SetText("x");
    });
    In<Slider>("Rate")->ReportMouseUp(0, 0);
    Expect(9, 1.24, "Rate：＋４");
    Walk({{"PlayStatusChangeKey", "再生中 a 0 bar 0"},
          {"wait 1000", "再生中 a 1.24 bar 1"},
          {"SpeedDown", "再生中 a 1.24 bar 1"},
          {"wait 1000", "再生中 a 2.44 bar 2"},
          {"open 1", "再生中 b 0 bar 0"},
          {"wait 1000", "再生中 b 1.2 bar 1"}});
    Expect(8, 1.2, "Rate：＋３");
}

} // namespace kirolane::tests
