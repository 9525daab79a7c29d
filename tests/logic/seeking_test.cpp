#include "twin_test.h"

#include <algorithm>

namespace kirolane::tests {

class SeekingTest : public TwinTest {
protected:
    void SetUp() override {
        Script("a", {.length = 1000.5});
        StartWithFiles({"a", "b"});
        Act("open 0");
        Act("PlayStatusChangeKey"); // paused: positions stay
    }
};

INSTANTIATE_TEST_SUITE_P(Of, SeekingTest, ::testing::Bool(), TwinName);

TEST_P(SeekingTest, StepsMoveEachPlayerFromWhereItStands) {
    const std::pair<std::string, int> steps[] = {{"Frame5DownKey", -5},   {"Frame5UpKey", 5},
                                                 {"Frame30DownKey", -30}, {"Frame30UpKey", 30},
                                                 {"FrameFreeUpKey", 120}, {"FrameFreeDownKey", -120}};
    for (const auto& [key, step] : steps)
        for (const std::string& act : {key, "monitor " + key}) {
            Act("at 500.75 500.25");
            Do([] { In<Slider>("QTM_PosBar")->SetValue(7); });
            // Of a sound's seeks only one moves the slider at once; the others leave it to the tick.
            const int bar = !IsSound() || step == -30 ? 500 + step : 7;
            const std::string at = std::to_string(500 + step);
            Walk({{act, "一時停止 a " + at + ".75/" + at + ".25 bar " + std::to_string(bar),
                   "一時停止 a " + at + ".75 bar " + std::to_string(bar)}});
        }
    Act("at 3 4");
    Walk({{"Frame5DownKey", "一時停止 a 0 bar 0", "一時停止 a 0 bar 7"}});
    Act("at 990 999");
    In<BevelButton>("QTM_FrameFreeUpButton")->ReportClick();
    EXPECT_EQ(State(), Either("一時停止 a 1000.5 bar 1000", "一時停止 a 1000.5 bar 7"));
    In<BevelButton>("QTM_FrameFreeDownButton")->ReportClick();
    EXPECT_EQ(Player()->Position(), 880.5);
}

TEST_P(SeekingTest, TheFreeStepIsReadFromItsLine) {
    const std::pair<const char*, double> lines[] = {{"1", 60}, {"2", 90}, {"19", 600},
                                                    {"20", 0}, {"", 0},   {"x", 0}};
    for (const auto& [text, step] : lines) {
        Do([text = text] { Console().Setting_Data.Set(Either(12, 14), text); });
        for (const double way : {1.0, -1.0}) {
            Act("at 700 700");
            Act(way > 0.0 ? "FrameFreeUpKey" : "FrameFreeDownKey");
            EXPECT_EQ(Player()->Position(), std::min(700.0 + way * step, 1000.5)) << text;
        }
    }
}

TEST_P(SeekingTest, TheMarkIsAWholeSecondThatClearsTheDriftAndGoesWithTheFile) {
    Walk({{"at 12.9 13.4", "一時停止 a 12.9/13.4 bar 0", "一時停止 a 12.9 bar 0"},
          {"MarkSeekKey", "一時停止 a 12.9/13.4 bar 0", "一時停止 a 12.9 bar 0"}, // none is set
          {"MarkKey", "一時停止 a 12.9/13.4 bar 0", "一時停止 a 12.9 bar 0"},
          {"at 50 51", "一時停止 a 50/51 bar 0", "一時停止 a 50 bar 0"}});
    Do([] { (IsSound() ? Console().mRate_Flag : Console().Rate_Flag) = 1.2; });
    Walk({{"monitor MarkSeekKey", "一時停止 a 12 bar 0"}, {"wait 1000", "一時停止 a 12 bar 12"}});
    EXPECT_EQ(Player()->Rate(), 1.2);
    EXPECT_EQ(Monitor().QTM()->Rate(), Either(1.2, 1.0));
    Walk({{"at 70 70", "一時停止 a 70 bar 12"},
          {"monitor MarkKey", "一時停止 a 70 bar 12", "一時停止 a 12 bar 12"}, // a sound's only goes there
          {"at 80 80", "一時停止 a 80 bar 12"},
          {"MarkSeekKey", "一時停止 a 70 bar 12", "一時停止 a 12 bar 12"},
          {"open 1", "再生中 b 0 bar 0"},
          {"at 5 5", "再生中 b 5 bar 0"},
          {"MarkSeekKey", "再生中 b 5 bar 0"}});
}

TEST_P(SeekingTest, ADragOfTheSliderSeeksOnce) {
    Walk({{"at 10 10.5", "一時停止 a 10/10.5 bar 0", "一時停止 a 10 bar 0"},
          {"drag 300", "一時停止 a 300 bar 300"}});
    Do([] { In<Slider>("QTM_PosBar")->SetValue(400); });
    EXPECT_EQ(State(), "一時停止 a 300 bar 400");
}

} // namespace kirolane::tests
