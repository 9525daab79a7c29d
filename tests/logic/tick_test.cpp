#include "logic/video/drift_text.h"
#include "logic/video/time_text.h"
#include "logic_test.h"

namespace kirolane::tests {

TEST(TimeTextTest, HasTwoDigitsAFieldAndWrapsHoursAt60) {
    std::string texts;
    for (const std::int32_t seconds : {0, 59, 60, 3725, 60 * 3600 - 1, 61 * 3600 + 61})
        texts += TimeText(seconds) + " ";
    EXPECT_EQ(texts, "00：00：00 00：00：59 00：01：00 01：02：05 59：59：59 01：01：01 ");
}

TEST(DriftTextTest, CutsToTwoDecimals) {
    const std::pair<float, const char*> rows[] = {
        {0.004F, "±0"},  {0.00001F, "±0"}, {0.9F, "+0.90"},  {1.0F, "+1"},        {12.345F, "+12.3"},
        {-0.004F, "±0"}, {-0.1F, "-0.10"}, {-0.9F, "-0.90"}, {-0.1234F, "-0.12"}, {-123.4F, "-123."}};
    for (const auto& [drift, text] : rows)
        EXPECT_EQ(drift > 0 ? DriftAheadText(drift) : DriftBehindText(drift),
                  std::string(text) + "秒：Timing");
}

class TickTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 100.7});
        StartWithFiles({"a"});
    }
    static std::string Timing() { return Console().TimingLabel()->Caption(); }
};

TEST_F(TickTest, EachReadOutComesFromItsOwnPlayer) {
    Open(0);
    Do([] { Monitor().QTM()->SetPosition(59.5); });
    Advance(1000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：01");
    EXPECT_EQ(Console().MonitorPosTime()->Caption(), "00：01：00");
    EXPECT_EQ(Console().MaxTime()->Caption(), "00：01：40");
    EXPECT_EQ(Timing(), "+59.5秒：Timing");

    Choose("PlayStatusChangeKey"); // a paused movie is read too
    Do([] {
        Console().QTM()->SetPosition(30.9);
        Monitor().QTM()->SetPosition(30.5);
    });
    Advance(1000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：30");
    EXPECT_EQ(Timing(), "-0.40秒：Timing") << "as a single it is the exact tenth";
}

TEST_F(TickTest, TheTicksWritesOfTheSliderDoNotSeek) {
    Open(0);
    Advance(1500);
    Media().ForgetOrders();
    Advance(5000);
    EXPECT_TRUE(Media().Orders().empty());
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 6);
    EXPECT_EQ(Timing(), "±0秒：Timing");
}

} // namespace kirolane::tests
