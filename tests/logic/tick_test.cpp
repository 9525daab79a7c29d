#include "logic/video/drift_text.h"
#include "logic/video/time_text.h"
#include "logic_test.h"

namespace kirolane::tests {

TEST(TimeTextTest, HasTwoDigitsAFieldAndWrapsHoursAt60) {
    EXPECT_EQ(TimeText(0), "00：00：00");
    EXPECT_EQ(TimeText(59), "00：00：59");
    EXPECT_EQ(TimeText(60), "00：01：00");
    EXPECT_EQ(TimeText(3725), "01：02：05");
    EXPECT_EQ(TimeText(60 * 3600 - 1), "59：59：59");
    EXPECT_EQ(TimeText(60 * 3600), "00：00：00");
    EXPECT_EQ(TimeText(61 * 3600 + 61), "01：01：01");
}

TEST(DriftTextTest, CutsToTwoDecimals) {
    const std::pair<float, const char*> ahead[] = {
        {0.004F, "±0秒：Timing"},     {0.00001F, "±0秒：Timing"},   {0.5F, "+0.50秒：Timing"},
        {0.9F, "+0.90秒：Timing"},    {0.1234F, "+0.12秒：Timing"}, {0.999F, "+0.99秒：Timing"},
        {1.25F, "+1.25秒：Timing"},   {1.0F, "+1秒：Timing"},       {1.5F, "+1.5秒：Timing"},
        {12.345F, "+12.3秒：Timing"}, {123.4F, "+123.秒：Timing"},
    };
    for (const auto& [drift, text] : ahead)
        EXPECT_EQ(DriftAheadText(drift), text);
    const std::pair<float, const char*> behind[] = {
        {-0.004F, "±0秒：Timing"},     {-0.3F, "-0.30秒：Timing"},   {-0.1234F, "-0.12秒：Timing"},
        {-12.345F, "-12.3秒：Timing"}, {-123.4F, "-123.秒：Timing"}, {-1.0F, "-1秒：Timing"},
    };
    for (const auto& [drift, text] : behind)
        EXPECT_EQ(DriftBehindText(drift), text);
}

class TickTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 100.7});
        Media().Script("short.mov", {.length = 0.7});
        StartWithMedia({"a.mov", "short.mov"});
    }
    static std::string Timing() { return Console().TimingLabel()->Caption(); }
};

TEST_F(TickTest, EachReadOutComesFromItsOwnPlayer) {
    Open(0);
    Do([] { Monitor().QTM()->SetPosition(59.5); });
    Advance(1000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：01");
    EXPECT_EQ(Console().MonitorPosTime()->Caption(), "00：01：00");
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 1);
    EXPECT_EQ(Timing(), "+59.5秒：Timing");
}

TEST_F(TickTest, APausedMovieIsReadTooAndNothingOpenIsLeftAlone) {
    Do([] { Console().PosTIme()->SetCaption("x"); });
    Advance(3000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "x");
    EXPECT_EQ(Timing(), "±0秒： Timing") << "the design's text";

    Open(0);
    Choose("PlayStatusChangeKey");
    Do([] {
        Console().QTM()->SetPosition(30.9);
        Monitor().QTM()->SetPosition(30.5);
    });
    Advance(1000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：30");
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 30);
    EXPECT_EQ(Timing(), "-0.40秒：Timing") << "as a single it is the exact tenth";
}

TEST_F(TickTest, TheTicksWritesOfTheSliderDoNotSeek) {
    Open(0);
    Advance(1500);
    Media().ForgetOrders();
    Advance(5000);
    EXPECT_TRUE(Media().Orders().empty());
    EXPECT_NEAR(Console().QTM()->Position(), 6.5, 1e-9);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 6);
    EXPECT_EQ(Timing(), "±0秒：Timing");
}

TEST_F(TickTest, TheDriftOfThePlayersIsShown) {
    Media().SetDrift("MonitorForm.QTM", {.rate = 0.99});
    Open(0);
    Advance(10000);
    EXPECT_EQ(Timing(), "-0.10秒：Timing");
    Advance(10000);
    EXPECT_EQ(Timing(), "-0.20秒：Timing");
}

TEST_F(TickTest, AMovieBelowASecondHasALengthOfNone) {
    Open(1);
    EXPECT_EQ(Console().QTM_Max, 0);
    EXPECT_EQ(Console().QTM_PosBar()->Maximum(), 0);
    EXPECT_EQ(Console().MaxTime()->Caption(), "00：00：00");
    Advance(1000);
    EXPECT_EQ(Console().PlayModeLabel()->Caption(), "停止");
}

} // namespace kirolane::tests
