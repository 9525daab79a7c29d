#include "logic_test.h"

namespace kirolane::tests {

namespace {
/// The state of the transport as the flags and controls tell it.
enum class State { Closed, Playing, Paused, Stopped };
} // namespace

class TransportTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 60.5});
        Media().Script("b.mov", {.length = 30.0});
        Media().Script("bad.mov", {.opens = false});
        StartWithMedia({"a.mov", "b.mov", "bad.mov"});
    }

    static void ExpectState(State state) {
        const Mainform& console = Console();
        const bool open = state != State::Closed;
        const bool playing = state == State::Playing;
        const char* mode = state == State::Closed    ? ""
                           : state == State::Playing ? "再生中"
                           : state == State::Paused  ? "一時停止"
                                                     : "停止";
        for (const auto& player : {console.QTM(), Monitor().QTM()}) {
            EXPECT_EQ(player->Movie().IsNil(), !open);
            EXPECT_EQ(player->Running(), playing);
            EXPECT_EQ(player->Visible(), open);
        }
        EXPECT_EQ(console.FileOpen_Flag, open);
        EXPECT_EQ(console.Play_Flag, playing);
        EXPECT_EQ(console.PlayModeLabel()->Caption(), mode);
        EXPECT_EQ(console.QTM_PlayButton()->Caption(), "＞");
        EXPECT_EQ(console.QTM_PlayButton()->Enabled(), open);
        EXPECT_EQ(console.QTM_FrameFreeDownButton()->Enabled(), open);
        EXPECT_EQ(console.QTM_FrameFreeUpButton()->Enabled(), open);
        EXPECT_EQ(console.QTM_PosBar()->Enabled(), open);
        EXPECT_EQ(console.DummyBack()->Visible(), !open);
        EXPECT_EQ(console.DummyQTM()->Visible(), !open);
        EXPECT_EQ(Monitor().DummyBack()->Visible(), !open);
        EXPECT_EQ(Monitor().DummyQTM()->Visible(), !open);
    }
    static void ExpectPositions(double seconds) {
        EXPECT_EQ(Console().QTM()->Position(), seconds);
        EXPECT_EQ(Monitor().QTM()->Position(), seconds);
    }
};

TEST_F(TransportTest, CommandsLeadFromStateToState) {
    ExpectState(State::Closed);
    Choose("PlayStatusChangeKey");
    Choose("StopKey");
    ExpectState(State::Closed);

    Open(0);
    ExpectState(State::Playing);
    ExpectPositions(0.0);
    Choose("PlayStatusChangeKey");
    ExpectState(State::Paused);
    Monitor().ReportMenuChosen("PlayStatusChangeKey");
    ExpectState(State::Playing);
    Choose("StopKey");
    ExpectState(State::Stopped);
    ExpectPositions(0.0);
    Console().QTM_PlayButton()->ReportClick();
    ExpectState(State::Playing);
    Console().QTM_PlayButton()->ReportClick();
    ExpectState(State::Paused);
    Monitor().ReportMenuChosen("StopKey");
    ExpectState(State::Stopped);
    Choose("CloseKey");
    ExpectState(State::Closed);
    ExpectPositions(0.0);
}

TEST_F(TransportTest, AnOpenReachesBothPlayersTogetherAsOneOrderEach) {
    Media().ForgetOrders();
    Open(0);
    ASSERT_EQ(Media().Orders().size(), 2U);
    const auto& first = Media().Orders()[0];
    const auto& second = Media().Orders()[1];
    EXPECT_EQ(first.batch, second.batch);
    for (const auto& order : {first, second}) {
        EXPECT_TRUE(order.order.running);
        EXPECT_EQ(order.order.seekTo, 0.0);
        EXPECT_EQ(order.order.rate, 1.0);
    }
    EXPECT_EQ(Media().OrdersOf("Mainform.QTM")[0].order.volume, 0);
    EXPECT_EQ(Media().OrdersOf("MonitorForm.QTM")[0].order.volume, 205) << "level 80";
    EXPECT_EQ(Media().Loads("Mainform.QTM"), Media().Loads("MonitorForm.QTM"));
    EXPECT_EQ(Media().Loads("Mainform.QTM"), std::vector<std::string>{Folder().Path("movies/a.mov")});
}

TEST_F(TransportTest, ACloseEmptiesTheReadOutsAndKeepsTheSettings) {
    Open(1);
    Do([] {
        Console().Mark_Pos = 7;
        Console().Mark_Flag = true;
        Console().Rate_Flag = 1.24;
        Console().Loop_Flag = true;
    });
    Choose("CloseKey");
    const Mainform& console = Console();
    for (const auto& label : {console.PosTIme(), console.MonitorPosTime(), console.MaxTime()})
        EXPECT_EQ(label->Caption(), "00：00：00");
    EXPECT_EQ(console.TimingLabel()->Caption(), " ±0秒：Timing");
    EXPECT_EQ(console.MediaType()->Caption() + console.FileLabel()->Caption(), "");
    EXPECT_EQ(console.FileNumberLabel()->Caption(), "3");
    EXPECT_EQ(console.QTM_PosBar()->Maximum(), 1);
    EXPECT_TRUE(Marked(console.StrGrid()).empty());
    EXPECT_EQ(console.Mark_Pos, 0);
    EXPECT_FALSE(console.Mark_Flag);
    EXPECT_EQ(console.Rate_Flag, 1.24);
    EXPECT_TRUE(console.Loop_Flag);
    EXPECT_EQ(console.File_Number, 1);
    EXPECT_EQ(console.QTM_Max, 30);
    EXPECT_EQ(console.StrGrid()->ListIndex(), 1);
    EXPECT_EQ(console.QTM()->Height(), 256);

    Do([] { Console().FileLabel()->SetCaption("x"); });
    Choose("CloseKey"); // nothing is open: not even a label changes
    EXPECT_EQ(console.FileLabel()->Caption(), "x");
}

TEST_F(TransportTest, OpeningAnotherRowClosesWhatIsOpen) {
    Open(0);
    Do([] { Console().Mark_Flag = true; });
    Advance(5000);
    Media().ForgetOrders();
    Open(1);
    ExpectState(State::Playing);
    ExpectPositions(0.0);
    EXPECT_FALSE(Console().Mark_Flag);
    EXPECT_EQ(Console().MaxTime()->Caption(), "00：00：30");
    ASSERT_EQ(Media().Orders().size(), 2U);
    EXPECT_FALSE(Media().Orders()[0].order.unload) << "the curtain is never ordered";
}

TEST_F(TransportTest, AFailedOpenAfterAGoodOneLeavesTheCurtainUp) {
    Open(0);
    Open(2);
    ExpectState(State::Closed);
    EXPECT_EQ(Console().MaxTime()->Caption(), "00：00：00");
    EXPECT_EQ(Console().StrGrid()->Cell(2, 2), kFailed);
    Open(0);
    ExpectState(State::Playing);
}

TEST_F(TransportTest, AResumeGoesBackToTheSecondOfTheSlider) {
    Open(0);
    Advance(12700);
    Choose("PlayStatusChangeKey");
    EXPECT_NEAR(Console().QTM()->Position(), 12.7, 1e-9);
    Do([] { Console().QTM_PosBar()->SetValue(12); });
    Choose("PlayStatusChangeKey");
    ExpectPositions(12.0);
    Advance(1000);
    ExpectPositions(13.0);
}

TEST_F(TransportTest, AStopRewindsAndKeepsTheRate) {
    Open(0);
    Do([] { Console().Rate_Flag = 1.35; });
    Advance(4000);
    Choose("StopKey");
    ExpectPositions(0.0);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 0);
    EXPECT_EQ(Console().PlayModeLabel()->Caption(), "停止") << "behind the event's 一時停止";
    Choose("PlayStatusChangeKey");
    Advance(2000);
    EXPECT_NEAR(Console().QTM()->Position(), 2.7, 1e-9);
    EXPECT_NEAR(Monitor().QTM()->Position(), 2.7, 1e-9);
}

TEST_F(TransportTest, TheConsolePlayersEventsBringTheMonitorAlong) {
    Open(0);
    Do([] { Console().QTM_PosBar()->SetValue(20); });
    Do([] { Console().QTM()->Stop(); });
    ExpectState(State::Paused);
    Do([] { Console().mStrGrid()->SetFocus(); });
    Do([] { Console().QTM()->Play(); });
    ExpectState(State::Playing);
    ExpectPositions(20.0);
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
}

TEST_F(TransportTest, AMuteOutlivesTheChangeOfMovie) {
    Open(0);
    Do([] { Console().Mute_Func(); });
    EXPECT_EQ(Monitor().QTM()->Volume(), 0);
    Open(1);
    EXPECT_TRUE(Console().Mute_Flag);
    EXPECT_EQ(Monitor().QTM()->Volume(), 0);
    EXPECT_EQ(Console().Current_QTM_Volume, 205);
    Do([] { Console().Mute_Func(); });
    EXPECT_EQ(Monitor().QTM()->Volume(), 205);
    EXPECT_EQ(Console().QTM()->Volume(), 0);
}

TEST_F(TransportTest, AMuteWithNothingOpenHoldsForTheNextMovie) {
    Choose("MuteKey");
    Open(0);
    EXPECT_TRUE(Console().Mute_Flag);
    EXPECT_EQ(Monitor().QTM()->Volume(), 0);
    EXPECT_EQ(Console().QTM()->Volume(), 0) << "the preview's silence does not hang on the level";
}

} // namespace kirolane::tests
