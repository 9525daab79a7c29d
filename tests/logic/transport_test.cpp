#include "twin_test.h"

namespace kirolane::tests {

class TransportTest : public TwinTest {
protected:
    void SetUp() override {
        Script("a", {.length = 60.5});
        Script("b", {.length = 30.0});
        Script("bad", {.opens = false});
        StartWithFiles({"a", "b", "bad"});
    }
};

INSTANTIATE_TEST_SUITE_P(Of, TransportTest, ::testing::Bool(), TwinName);

TEST_P(TransportTest, CommandsLeadFromStateToState) {
    Walk({
        {"PlayStatusChangeKey", "closed"},
        {"StopKey", "closed"},
        {"open 0", "再生中 a 0 bar 0"},
        {"wait 5700", "再生中 a 5.7 bar 5"},
        {"PlayStatusChangeKey", "一時停止 a 5.7 bar 5"},
        {"monitor PlayStatusChangeKey", "再生中 a 5 bar 5", "再生中 a 5.7 bar 5"}, // by the slider, or not
        {"wait 2000", "再生中 a 7 bar 6", "再生中 a 7.7 bar 7"},
        {"StopKey", "停止 a 0 bar 0"},
        {"button", "再生中 a 0 bar 0"},
        {"wait 1000", "再生中 a 1 bar 0"},
        {"button", "一時停止 a 1 bar 0"},
        {"monitor StopKey", "停止 a 0 bar 0"},
        {"open 2", "closed"}, // it fails
        {"open 0", "再生中 a 0 bar 0"},
        {"wait 5000", "再生中 a 5 bar 4"},
        {"open 1", "再生中 b 0 bar 0"},
        {"CloseKey", "closed"},
    });
    EXPECT_EQ(List()->Cell(2, 2), kFailed);
}

TEST_P(TransportTest, ACloseEmptiesTheReadOutsAndKeepsTheSettings) {
    Act("LoopKey");
    Act("SpeedUp");
    Walk({{"open 1", "再生中 b 0 bar 0"}, {"wait 2000", "再生中 b 2.1 bar 2"}, {"CloseKey", "closed"}});
    EXPECT_EQ(Text(Either("PosTIme", "PosTime")) + Text("MaxTime"), "00：00：0000：00：00");
    EXPECT_EQ(Console().MonitorPosTime()->Caption(), "00：00：00");
    EXPECT_EQ(Console().TimingLabel()->Caption(), Either(" ±0秒：Timing", "±0秒： Timing"));
    EXPECT_EQ(Sound().Title(), Either("Untitled", "00：00：00"));
    EXPECT_EQ(Text("MediaType"), "");
    EXPECT_EQ(In<Slider>("QTM_PosBar")->Maximum(), 1);
    EXPECT_EQ(Counter(), "3");
    EXPECT_EQ(Own<StaticText>("LoopLabel")->Caption(), "→");
    EXPECT_EQ(In<Slider>("Rate")->Value(), 6);
    EXPECT_EQ(List()->ListIndex(), 1);
    Do([] { In<StaticText>("MaxTime")->SetCaption("x"); });
    Walk({{"CloseKey", "closed"}}); // nothing is open: not even a label changes
    EXPECT_EQ(Text("MaxTime"), "x");
}

class MovieTransportTest : public TransportTest {};
INSTANTIATE_TEST_SUITE_P(Of, MovieTransportTest, ::testing::Values(false), TwinName);

TEST_P(MovieTransportTest, AnOpenReachesBothPlayersTogetherAsOneOrderEach) {
    for (const std::int32_t row : {0, 1}) {
        Media().ForgetOrders();
        Open(row);
        const auto& orders = Media().Orders();
        ASSERT_EQ(orders.size(), 2U);
        EXPECT_EQ(orders[0].batch, orders[1].batch);
        for (const auto& order : orders) {
            EXPECT_TRUE(order.order.running);
            EXPECT_FALSE(order.order.unload) << "the curtain is never ordered";
            EXPECT_EQ(order.order.seekTo, 0.0);
            EXPECT_EQ(order.order.rate, 1.0);
        }
        EXPECT_EQ(Media().Loads("Mainform.QTM"), Media().Loads("MonitorForm.QTM"));
        EXPECT_EQ(Media().Loads("Mainform.QTM").back(),
                  Folder().Path(row == 0 ? "media/a.mov" : "media/b.mov"));
        if (row == 0) {
            EXPECT_EQ(Media().OrdersOf("Mainform.QTM")[0].order.volume, 0);
            EXPECT_EQ(Media().OrdersOf("MonitorForm.QTM")[0].order.volume, 205) << "level 80";
        }
    }
}

TEST_P(MovieTransportTest, TheConsolePlayersEventsBringTheMonitorAlong) {
    Act("open 0");
    Do([] { Console().QTM_PosBar()->SetValue(20); });
    Do([] { Console().QTM()->Stop(); });
    EXPECT_EQ(State(), "一時停止 a 0 bar 20");
    Do([] { Console().mStrGrid()->SetFocus(); });
    Do([] { Console().QTM()->Play(); });
    EXPECT_EQ(State(), "再生中 a 20 bar 20");
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
}

} // namespace kirolane::tests
