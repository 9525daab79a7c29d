#include "logic_test.h"

namespace kirolane::tests {

class EndOfMovieTest : public LogicTest {
protected:
    void SetUp() override {
        Media().SetDefaultMovie({.length = 3.5});
        StartWithMedia({"a.mov", "b.mov", "c.mov"});
    }
    static std::string Mode() { return Console().PlayModeLabel()->Caption(); }
    static std::string Playing() { return Console().FileLabel()->Caption(); }
};

TEST_F(EndOfMovieTest, TheTogglesExcludeEachOther) {
    const auto expect = [](bool loop, bool list, const char* label) {
        EXPECT_EQ(Console().Loop_Flag, loop);
        EXPECT_EQ(Console().List_Flag, list);
        EXPECT_EQ(Console().LoopLabel()->Caption(), label);
    };
    Choose("LoopKey");
    expect(true, false, "→");
    Choose("ListLoopKey");
    expect(false, true, "↓");
    Monitor().ReportMenuChosen("LoopKey");
    expect(true, false, "→");
    Choose("LoopKey");
    expect(false, false, "");
    Choose("ListLoopKey");
    Choose("ListLoopKey");
    expect(false, false, "");
}

TEST_F(EndOfMovieTest, ASinglePlayStopsRewoundAtTheTickBeforeTheTrueEnd) {
    Open(0);
    Advance(2000);
    EXPECT_EQ(Mode(), "再生中");
    Advance(1000);
    EXPECT_EQ(Mode(), "停止");
    EXPECT_FALSE(Console().Play_Flag);
    EXPECT_FALSE(Monitor().QTM()->Running());
    EXPECT_EQ(Monitor().QTM()->Position(), 0.0);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 0);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：03") << "read before the jump";
    Advance(1000);
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：00");
    EXPECT_EQ(Mode(), "停止");
}

TEST_F(EndOfMovieTest, ARepeatGoesOnFromTheBeginningWithItsRate) {
    Choose("LoopKey");
    Open(0);
    Choose("SpeedUp");
    Advance(3000); // 3.15 s played
    EXPECT_EQ(Mode(), "再生中");
    EXPECT_TRUE(Console().QTM()->Running());
    EXPECT_EQ(Console().QTM()->Position(), 0.0);
    Advance(1000);
    EXPECT_NEAR(Monitor().QTM()->Position(), 1.05, 1e-9);
    Advance(20000);
    EXPECT_TRUE(Console().Play_Flag);
    EXPECT_EQ(Playing(), "a.mov");
}

TEST_F(EndOfMovieTest, AMovieThatHasRunOutIsRepeatedToo) {
    Media().Script("b.mov", {.length = 4.0, .dataEnd = 1.2});
    Choose("LoopKey");
    Open(1);
    Advance(2000); // at 1.2 s its data was at an end: it reads its Duration
    EXPECT_EQ(Console().PosTIme()->Caption(), "00：00：04");
    Advance(1000);
    EXPECT_NEAR(Console().QTM()->Position(), 1.0, 1e-9) << "it goes on from the beginning";
    EXPECT_TRUE(Console().Play_Flag);
}

TEST_F(EndOfMovieTest, TheListGoesOnAndWraps) {
    Choose("ListLoopKey");
    Open(1);
    Advance(3000);
    EXPECT_EQ(Playing(), "c.mov");
    EXPECT_EQ(Marked(Console().StrGrid()), std::vector<std::int32_t>{2});
    EXPECT_EQ(Console().FileNumberLabel()->Caption(), "3 / 3");
    Advance(3000); // the next row is blank and leads to the first
    EXPECT_EQ(Playing(), "a.mov");
    Advance(3000);
    EXPECT_EQ(Playing(), "b.mov");
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 0) << "the rest of the tick is the new movie's";
}

TEST_F(EndOfMovieTest, AListThatFillsTheGridWrapsFromItsLastRow) {
    MakeMedia("many", {});
    for (int n = 1; n <= 30; ++n)
        static_cast<void>(Folder().Write("many/" + std::to_string(n) + ".mov", ""));
    Scan(MakeMedia("many", {}));
    Choose("ListLoopKey");
    Console().StrGrid()->ReportScroll(4);
    Open(29);
    Advance(3000);
    EXPECT_EQ(Playing(), "1.mov");
    EXPECT_EQ(Console().StrGrid()->ListIndex(), 0);
}

TEST_F(EndOfMovieTest, AfterARescanTheListStartsAtItsFirstRow) {
    Choose("ListLoopKey");
    Open(1);
    Scan(MakeMedia("other", {"x.mov", "y.mov", "z.mov"}));
    Do([] { Console().GetListIndex_Flag = 1; });
    Advance(3000);
    EXPECT_EQ(Playing(), "x.mov");
    EXPECT_EQ(Console().GetListIndex_Flag, 0);
}

TEST_F(EndOfMovieTest, AnEmptiedListStopsAndOneThatCannotBeOpenedEndsTheRun) {
    Choose("ListLoopKey");
    Open(0);
    Scan(MakeMedia("other", {"x.txt"}));
    Advance(3000);
    EXPECT_EQ(Mode(), "停止");
    EXPECT_EQ(Playing(), "a.mov");
    EXPECT_TRUE(Console().List_Flag);

    Scan(MakeMedia("bad", {"p.mov", "q.mov"}));
    Media().Script("q.mov", {.opens = false});
    Open(0);
    Advance(3000);
    EXPECT_TRUE(Console().QTM()->Movie().IsNil());
    EXPECT_EQ(Mode(), "");
    EXPECT_EQ(Console().StrGrid()->Cell(1, 2), kFailed);
    Advance(5000);
    EXPECT_TRUE(Console().List_Flag);
    EXPECT_TRUE(Console().QTM()->Movie().IsNil());
}

TEST_F(EndOfMovieTest, APausedMoviePastItsLastSecondRests) {
    Open(0);
    Advance(1500);
    Choose("PlayStatusChangeKey");
    Choose("Frame5UpKey");
    EXPECT_EQ(Console().QTM()->Position(), 3.5);
    Advance(5000);
    EXPECT_EQ(Mode(), "一時停止");
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 3);
    Choose("PlayStatusChangeKey"); // from second 3, which is the end at the next tick
    Advance(1000);
    EXPECT_EQ(Mode(), "停止");
}

} // namespace kirolane::tests
