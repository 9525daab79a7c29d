#include "twin_test.h"

namespace kirolane::tests {

/// What commands do to a file that is open, from its opening to its end.
class TransportTest : public TwinTest {
protected:
    void SetUp() override {
        Media().SetDefaultMovie({.length = 3.5});
        Script("a", {.length = 1000.5});
        Script("b", {.length = 30.0});
        Script("bad", {.opens = false});
        Script("short", {.length = 0.7});
        Script("ranout", {.length = 4.0, .dataEnd = 1.2});
        StartWithFiles({"a", "b", "bad"});
    }
};

INSTANTIATE_TEST_SUITE_P(Of, TransportTest, ::testing::Bool(), TwinName);

TEST_P(TransportTest, CommandsLeadFromStateToState) {
    Act("open 1; CloseKey");
    Walk({
        {"PlayStatusChangeKey; StopKey; CloseKey", ""},
        {"open 0", "file a, mode 再生中, max 00：16：40 1000, list 1 / 3 ●0, type QTM",
         "file a, mode 再生中, max 00：16：40 1000, list 1 / 3 ●0, type Wave"},
        {"wait 5700", "at 5.7, bar 5, time 00：00：05"},
        {"PlayStatusChangeKey", "mode 一時停止"},
        {"monitor PlayStatusChangeKey", "mode 再生中, at 5", "mode 再生中"}, // by the slider, or not
        {"wait 2000", "at 7, bar 6, time 00：00：06", "at 7.7, bar 7, time 00：00：07"},
        {"StopKey", "mode 停止, at 0, bar 0"},
        {"button", "mode 再生中"},
        {"wait 1000", "at 1, time 00：00：00"},
        {"button", "mode 一時停止"},
        {"monitor StopKey", "mode 停止, at 0"},
        {"open 2", "file, mode, max 00：00：00 1, list 3"}, // the type comes from the name alone
        {"LoopKey; SpeedUp", "loop →, rate 6 ＋１ 1.05"},
        {"open 0; wait 5000",
         "file a, mode 再生中, max 00：16：40 1000, list 1 / 3 ●0, at 5.25, bar 4, time 00：00：04"},
        {"open 1", "file b, at 0, bar 0, max 00：00：30 30, list 2 / 3 ●1, time 00：00：00"},
        {"wait 2000", "at 2.1, bar 1, time 00：00：01"},
        {"CloseKey", "file, mode, type, max 00：00：00 1, list 3, at 0, bar 0, time 00：00：00"},
    });
    EXPECT_EQ(List()->ListIndex(), 1);
    EXPECT_EQ(Console().MonitorPosTime()->Caption(), "00：00：00");
    EXPECT_EQ(Console().TimingLabel()->Caption(), Either(" ±0秒：Timing", "±0秒： Timing"));
    EXPECT_EQ(Sound().Title(), Either("Untitled", "00：00：00"));
}

TEST_P(TransportTest, SpeedsGoInElevenStepsAndHoldForTheNextFile) {
    Walk({{"SpeedUp; SpeedUp; SpeedUp; SpeedUp", "rate 9 ＋４ 1.24"},
          {"SpeedUp; SpeedUp", "rate 10 ＋５ 1.35"},
          {"SpeedDown; SpeedDown; SpeedDown; SpeedDown; SpeedDown", "rate 5  ±０ 1"},
          {"SpeedDown; SpeedDown; SpeedDown; SpeedDown; SpeedDown; SpeedDown", "rate 0 −５ 0.75"},
          {"rate 9", "rate 9 ＋４ 1.24"}});
    Do([] {
        Player()->SetRate(1.0);
        In<StaticText>("RateText")->SetText("Rate：x");
    });
    In<Slider>("Rate")->ReportMouseUp(0, 0);
    EXPECT_EQ(Shown("rate"), "9 ＋４ 1.24");
    Act("open 0");
    Walk({{"wait 1000", "at 1.24, bar 1, time 00：00：01"},
          {"SpeedDown", "rate 8 ＋３ 1.2"},
          {"wait 1000", "at 2.44, bar 2, time 00：00：02"},
          {"open 1; wait 1000", "file b, at 1.2, bar 1, max 00：00：30 30, list 2 / 3 ●1, time 00：00：01"}});
}

TEST_P(TransportTest, LevelsGoByKeysAndByThePointerAndTheMoviesBarLagsAtThree) {
    const auto point = [](int y) { return "point " + std::to_string(y); };
    Act("open 0; PlayStatusChangeKey");
    Walk({{"level 99; VolumeUpKey", "vol 100 100 256"},
          {"VolumeUpKey", ""},
          {"level 1; VolumeDownKey", "vol    0 0 0"},
          {"VolumeDownKey", ""},
          {"level 9; VolumeUpKey", "vol   10 10 27"},
          {"level 33; VolumeUpKey", "vol   34 33 90", "vol   34 34 90"},
          {"VolumeUpKey", "vol   35 34 92", "vol   35 35 92"},
          {"monitor VolumeUpKey", "vol   36 35 94", "vol   36 36 94"},
          {"level 38; monitor VolumeDownKey", "vol   37 37 96"},
          {"level 55; " + point(Either(375, 66)), "vol   60 60 155"},
          {"level 55; " + point(Either(378, 70)), "vol   60 60 155"},
          {"level 55; " + point(Either(359, 51)), "vol   55 55 141"}, // beside the bands
          {point(Either(396, 88)), ""}});
    // A mute outlives the file, a step ends it but at the ends; the bar of one gets no moves.
    Walk({{"MuteKey", "vol   55 55 0 muted"},
          {point(Either(394, 86)), ""},
          {"open 0; PlayStatusChangeKey", ""},
          {"MuteKey", "vol   55 55 141"},
          {"monitor MuteKey", "vol   55 55 0 muted"},
          {"VolumeUpKey", "vol   56 56 143"},
          {"MuteKey; VolumeDownKey", "vol   55 55 141"},
          {"level 100; MuteKey; VolumeUpKey", "vol 100 100 0 muted"},
          {"MuteKey", "vol 100 100 256"},
          {"level 0; MuteKey; VolumeDownKey", "vol    0 0 0 muted"},
          {"MuteKey", "vol    0 0 0"}});
    Act("CloseKey; level 55; MuteKey; open 0"); // at first with nothing open
    EXPECT_EQ(Shown("vol"), "  55 55 0 muted");
}

TEST_P(TransportTest, StepsMoveEachPlayerFromWhereItStands) {
    const std::pair<std::string, int> steps[] = {{"Frame5DownKey", -5},   {"Frame5UpKey", 5},
                                                 {"Frame30DownKey", -30}, {"Frame30UpKey", 30},
                                                 {"FrameFreeUpKey", 120}, {"FrameFreeDownKey", -120}};
    Act("open 0; PlayStatusChangeKey");
    for (const auto& [key, step] : steps)
        for (const std::string& act : {key, "monitor " + key}) {
            Act("at 500.75 500.25");
            Do([] { In<Slider>("QTM_PosBar")->SetValue(7); });
            // Of a sound's seeks only one moves the slider at once; the others leave it to the tick.
            const std::string at = "at " + std::to_string(500 + step);
            const std::string bar = ", bar " + std::to_string(500 + step);
            Walk({{act, at + ".75/" + std::to_string(500 + step) + ".25" + bar,
                   at + ".75" + (step == -30 ? bar : "")}});
        }
    Walk({{"at 3 4; Frame5DownKey", "at 0, bar 0", "at 0"}, {"at 990 999", "at 990/999", "at 990"}});
    In<BevelButton>("QTM_FrameFreeUpButton")->ReportClick();
    EXPECT_EQ(Shown("at"), "1000.5");
    In<BevelButton>("QTM_FrameFreeDownButton")->ReportClick();
    EXPECT_EQ(Shown("at"), "880.5");
    const std::tuple<const char*, const char*, const char*> lines[] = {
        {"1", "760", "640"},  {"2", "790", "610"}, {"19", "1000.5", "100"},
        {"20", "700", "700"}, {"", "700", "700"},  {"x", "700", "700"}};
    for (const auto& [text, up, down] : lines) {
        Do([text = text] { Console().Setting_Data.Set(Either(12, 14), text); });
        Act("at 700 700; FrameFreeUpKey");
        EXPECT_EQ(Shown("at"), up) << text;
        Act("at 700 700; FrameFreeDownKey");
        EXPECT_EQ(Shown("at"), down) << text;
    }
}

TEST_P(TransportTest, TheMarkIsAWholeSecondThatClearsTheDriftAndGoesWithTheFileAndADragSeeksOnce) {
    Act("open 0; PlayStatusChangeKey; at 12.9 13.4");
    Walk({{"MarkSeekKey", ""}, // none is set
          {"MarkKey", ""},
          {"at 50 51", "at 50/51", "at 50"}});
    Do([] { (IsSound() ? Console().mRate_Flag : Console().Rate_Flag) = 1.2; });
    Walk({{"monitor MarkSeekKey", "at 12, rate 5 ±０ 1.2"},
          {"wait 1000", "bar 12, time 00：00：12"},
          {"at 70 70; monitor MarkKey", "at 70", ""}, // a sound's only goes there
          {"at 80 80; MarkSeekKey", "", ""},
          {"at 10 10.5", "at 10/10.5", "at 10"},
          {"drag 300", "at 300, bar 300"}});
    Do([] { In<Slider>("QTM_PosBar")->SetValue(400); });
    EXPECT_EQ(Shown("at"), "300");
    Act("open 1; PlayStatusChangeKey; at 5 5; MarkSeekKey");
    EXPECT_EQ(Shown("at"), "5");
}

TEST_P(TransportTest, ASinglePlayStopsRewoundAtTheTickBeforeTheTrueEnd) {
    Act("list c short; open 0");
    Walk({{"wait 2000", "at 2, bar 2, time 00：00：02"},
          {"wait 1000", "mode 停止, at 0, bar 0, time 00：00：03"}, // read before the jump
          {"wait 1000", "time 00：00：00"},
          {"open 1; wait 500", "file short, mode 再生中, at 0.5, max 00：00：00 0, list 2 / 2 ●1"},
          {"wait 500", "mode 停止, at 0"},
          // A pause in the last second rests; a movie resumes from second 3, which is the end at the next
          // tick.
          {"open 0; wait 1500",
           "file c, mode 再生中, at 1.5, bar 1, max 00：00：03 3, list 1 / 2 ●0, time 00：00：01"},
          {"PlayStatusChangeKey", "mode 一時停止"},
          {"Frame5UpKey", "at 3.5, bar 3", "at 3.5"},
          {"wait 5000", "time 00：00：03", "time 00：00：03, bar 3"},
          {"PlayStatusChangeKey", "mode 再生中, at 3", "mode 再生中"},
          {"wait 1000", "mode 停止, at 0, bar 0"}});
}

TEST_P(TransportTest, ARepeatGoesOnFromTheBeginningWithItsRate) {
    Act("list c ranout; LoopKey; SpeedUp; open 0");
    Walk({{"wait 3000", "time 00：00：03"}, // after 3.15 s
          {"wait 1000", "at 1.05, bar 1, time 00：00：01"},
          {"wait 20000", "at 0, bar 0, time 00：00：03"}});
    // One that has run out of data reads its Duration, which is its end.
    Act("SpeedDown; open 1");
    Walk({{"wait 2000", "time 00：00：04"}, {"wait 1000", "at 1, bar 1, time 00：00：01"}});
}

TEST_P(TransportTest, TheTogglesExcludeEachOtherAndTheListGoesOnAndWraps) {
    Walk({{"LoopKey", "loop →"},
          {"ListLoopKey", "loop ↓"},
          {"monitor LoopKey", "loop →"},
          {"LoopKey", "loop"},
          {"ListLoopKey", "loop ↓"},
          {"monitor ListLoopKey", "loop"},
          {"ListLoopKey", "loop ↓"}});
    const auto next = [&](const std::string& file, const std::string& list) {
        Act("wait 3000");
        EXPECT_EQ(Shown("mode") + Shown("file") + Shown("at"), "再生中" + file + "0");
        EXPECT_EQ(Shown("list"), list);
    };
    Act("list x y z; open 1");
    next("z", "3 / 3 ●2");
    next("x", "1 / 3 ●0"); // behind z a blank row
    next("y", "2 / 3 ●1");

    // A list without blank rows, from its last.
    Scan(MakeMany("many", 30));
    List()->ReportScroll(4);
    Act("open 29");
    next("1", "1 / 30 ●0");

    // One that was filled anew begins, in whatever list a file was opened last.
    Act("open 1; list x y");
    Do([] { TheListOpenedLast() = Either(1, 0); });
    next("x", "1 / 2 ●0");
    EXPECT_EQ(TheListOpenedLast(), Either(0, 1));

    // An emptied list stops; a row that cannot be opened ends the run.
    Scan(MakeMedia("other", {"x.txt"}));
    Walk({{"wait 3000", "mode 停止, time 00：00：03"}});
    Act("list aa bad; open 0; wait 3000");
    EXPECT_EQ(Shown("file") + Shown("mode") + Shown("loop"), "↓");
    Walk({{"wait 5000", ""}});
    EXPECT_EQ(List()->Cell(1, 2), kFailed);
}

class MovieTransportTest : public TransportTest {};
INSTANTIATE_TEST_SUITE_P(Of, MovieTransportTest, ::testing::Values(false), TwinName);

TEST_P(MovieTransportTest, AnOpenReachesBothPlayersTogetherAsOneOrderEach) {
    for (const std::string row : {"0", "1"}) {
        Media().ForgetOrders();
        Act("open " + row);
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
                  Folder().Path(row == "0" ? "media/a.mov" : "media/b.mov"));
    }
}

TEST_P(MovieTransportTest, TheConsolePlayersEventsBringTheMonitorAlong) {
    Act("open 0");
    Do([] { Console().QTM_PosBar()->SetValue(20); });
    Do([] { Console().QTM()->Stop(); });
    EXPECT_EQ(Shown("mode") + Shown("at"), "一時停止0");
    Do([] { Console().QTM()->Play(); });
    EXPECT_EQ(Shown("mode") + Shown("at"), "再生中20");
}

} // namespace kirolane::tests
