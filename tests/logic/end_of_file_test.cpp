#include "twin_test.h"

namespace kirolane::tests {

class EndOfFileTest : public TwinTest {
protected:
    void SetUp() override {
        Media().SetDefaultMovie({.length = 3.5});
        Script("short", {.length = 0.7});
        Script("ranout", {.length = 4.0, .dataEnd = 1.2});
        Script("bad", {.opens = false});
        StartWithFiles({"a", "b", "c"});
    }
};

INSTANTIATE_TEST_SUITE_P(Of, EndOfFileTest, ::testing::Bool(), TwinName);

TEST_P(EndOfFileTest, TheTogglesExcludeEachOther) {
    const std::pair<const char*, const char*> presses[] = {
        {"LoopKey", "→"}, {"ListLoopKey", "↓"}, {"monitor LoopKey", "→"},
        {"LoopKey", ""},  {"ListLoopKey", "↓"}, {"monitor ListLoopKey", ""}};
    for (const auto& [key, label] : presses) {
        Act(key);
        ExpectWhole();
        EXPECT_EQ(Own<StaticText>("LoopLabel")->Caption(), label);
        EXPECT_EQ(Either(Console().Loop_Flag, Console().mLoop_Flag), std::string(label) == "→");
        EXPECT_EQ(Either(Console().List_Flag, Console().mList_Flag), std::string(label) == "↓");
        EXPECT_EQ(Either(Console().mLoopLabel(), Console().LoopLabel())->Caption(), "") << "the twin's";
    }
}

TEST_P(EndOfFileTest, ASinglePlayStopsRewoundAtTheTickBeforeTheTrueEnd) {
    Walk(
        {{"open 0", "再生中 a 0 bar 0"}, {"wait 2000", "再生中 a 2 bar 2"}, {"wait 1000", "停止 a 0 bar 0"}});
    EXPECT_EQ(Text(Either("PosTIme", "PosTime")), "00：00：03") << "read before the jump";
    Walk({{"wait 1000", "停止 a 0 bar 0"}});
    EXPECT_EQ(Text(Either("PosTIme", "PosTime")), "00：00：00");

    Scan(MakeFiles("other", {"short", "a"}));
    Walk({{"open 1", "再生中 short 0 bar 0"}, {"wait 500", "再生中 short 0.5 bar 0"}}); // its length is none
    EXPECT_EQ(Text("MaxTime"), "00：00：00");
    EXPECT_EQ(In<Slider>("QTM_PosBar")->Maximum(), 0);
    Walk({{"wait 500", "停止 short 0 bar 0"}});

    // A pause in the last second rests; a movie resumes from second 3, which is the end at the next tick.
    Walk({{"open 0", "再生中 a 0 bar 0"},
          {"wait 1500", "再生中 a 1.5 bar 1"},
          {"PlayStatusChangeKey", "一時停止 a 1.5 bar 1"},
          {"Frame5UpKey", "一時停止 a 3.5 bar 3", "一時停止 a 3.5 bar 1"},
          {"wait 5000", "一時停止 a 3.5 bar 3"},
          {"PlayStatusChangeKey", "再生中 a 3 bar 3", "再生中 a 3.5 bar 3"},
          {"wait 1000", "停止 a 0 bar 0"}});
}

TEST_P(EndOfFileTest, ARepeatGoesOnFromTheBeginningWithItsRate) {
    Act("LoopKey");
    Act("SpeedUp");
    Walk({{"open 0", "再生中 a 0 bar 0"},
          {"wait 3000", "再生中 a 0 bar 0"}, // after 3.15 s
          {"wait 1000", "再生中 a 1.05 bar 1"},
          {"wait 20000", "再生中 a 0 bar 0"}});
    // One that has run out of data reads its Duration, which is its end.
    Act("SpeedDown");
    Scan(MakeFiles("other", {"ranout"}));
    Walk({{"open 0", "再生中 ranout 0 bar 0"},
          {"wait 2000", "再生中 ranout 0 bar 0"},
          {"wait 1000", "再生中 ranout 1 bar 1"}});
}

TEST_P(EndOfFileTest, TheListGoesOnAndWraps) {
    Act("ListLoopKey");
    Walk({{"open 1", "再生中 b 0 bar 0"}, {"wait 3000", "再生中 c 0 bar 0"}});
    EXPECT_EQ(Counter(), "3 / 3 ●2");
    Walk({{"wait 3000", "再生中 a 0 bar 0"}, {"wait 3000", "再生中 b 0 bar 0"}}); // behind c a blank row

    // A list without blank rows, from its last.
    Scan(MakeMany("many", 30));
    List()->ReportScroll(4);
    Walk({{"open 29", "再生中 30 0 bar 0"}, {"wait 3000", "再生中 1 0 bar 0"}});
    EXPECT_EQ(List()->ListIndex(), 0);

    // One that was filled anew begins, in whatever list a file was opened last.
    Act("open 1");
    Scan(MakeFiles("other", {"x", "y", "z"}));
    Do([] { Console().GetListIndex_Flag = Either(1, 0); });
    Walk({{"wait 3000", "再生中 x 0 bar 0"}});
    EXPECT_EQ(Console().GetListIndex_Flag, Either(0, 1));
}

TEST_P(EndOfFileTest, AnEmptiedListStopsAndOneThatCannotBeOpenedEndsTheRun) {
    Act("ListLoopKey");
    Act("open 0");
    Scan(MakeMedia("other", {"x.txt"}));
    Walk({{"wait 3000", "停止 a 0 bar 0"}});
    EXPECT_EQ(Own<StaticText>("LoopLabel")->Caption(), "↓");
    Scan(MakeFiles("some", {"a", "bad"}));
    Walk({{"open 0", "再生中 a 0 bar 0"}, {"wait 3000", "closed"}, {"wait 5000", "closed"}});
    EXPECT_EQ(List()->Cell(1, 2), kFailed);
    EXPECT_EQ(Own<StaticText>("LoopLabel")->Caption(), "↓");
}

} // namespace kirolane::tests
