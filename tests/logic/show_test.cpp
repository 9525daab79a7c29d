#include "logic/shell/menu_table.h"
#include "logic_test.h"
#include "support/captured_stderr.h"

#include <random>
#include <regex>

namespace kirolane::tests {

/// A whole evening: random commands from a fixed seed, and what must hold after every tick.
class ShowTest : public LogicTest {
protected:
    /// Every command but that which ends the program.
    static std::vector<std::string_view> Keys() {
        std::vector<std::string_view> keys;
        for (const MenuTable& menu : kMenus)
            for (const MenuRow& row : menu.rows)
                if (row.text != "-" && row.name != "FileQuit")
                    keys.push_back(row.name);
        return keys;
    }
    static void ExpectTransport(bool open, bool fileOpen, bool play, bool running, const std::string& mode,
                                bool enabled) {
        EXPECT_EQ(fileOpen, open);
        EXPECT_EQ(enabled, open);
        EXPECT_EQ(running, play);
        if (play)
            EXPECT_EQ(mode, "再生中");
        else if (open)
            EXPECT_TRUE(mode == "一時停止" || mode == "停止") << mode;
        else
            EXPECT_EQ(mode, "");
    }
    static void ExpectTexts() {
        static const std::regex time("[0-9]{2}：[0-5][0-9]：[0-5][0-9]");
        static const std::regex counter("[0-9]+( / [0-9]+)?");
        static const std::regex volume("Volume：(100|  [0-9]{2}|   [0-9]| 80)");
        static const std::regex timing("( ?±0秒： ?|[+-][0-9.]{1,4}秒：)Timing");
        const auto expect = [](const Ref<StaticText>& label, const std::regex& form) {
            EXPECT_TRUE(std::regex_match(label->Caption(), form)) << label->Path() << " " << label->Caption();
        };
        for (const auto& label : {Console().PosTIme(), Console().MonitorPosTime(), Console().MaxTime(),
                                  Sound().PosTime(), Sound().MaxTime()})
            expect(label, time);
        expect(Console().FileNumberLabel(), counter);
        expect(Console().mFileNumberLabel(), counter);
        expect(Console().VolumeLabel(), volume);
        expect(Sound().VolumeLabel(), volume);
        expect(Console().TimingLabel(), timing);
    }
    static void ExpectInvariants() {
        const Mainform& console = Console();
        const auto& twin = Monitor().QTM();
        ExpectTransport(!console.QTM()->Movie().IsNil(), console.FileOpen_Flag, console.Play_Flag,
                        console.QTM()->Running(), console.PlayModeLabel()->Caption(),
                        console.QTM_PlayButton()->Enabled());
        ExpectTransport(!Sound().QTM()->Movie().IsNil(), console.mFileOpen_Flag, console.mPlay_Flag,
                        Sound().QTM()->Running(), Sound().PlayModeLabel()->Caption(),
                        Sound().QTM_PlayButton()->Enabled());
        EXPECT_EQ(twin->Movie().IsNil(), console.QTM()->Movie().IsNil());
        EXPECT_EQ(twin->Running(), console.QTM()->Running());
        EXPECT_EQ(console.DummyBack()->Visible(), console.QTM()->Movie().IsNil());
        EXPECT_TRUE(console.FileOpen_Flag || !console.Mark_Flag);
        EXPECT_FALSE(console.Loop_Flag && console.List_Flag);
        EXPECT_FALSE(console.mLoop_Flag && console.mList_Flag);
        EXPECT_EQ(console.VolumeLabel()->Enabled(), !console.Mute_Flag);
        EXPECT_TRUE(!console.Mute_Flag || twin->Volume() == 0);
        EXPECT_TRUE(!console.FileOpen_Flag || console.QTM()->Volume() == 0);
        EXPECT_LE(Marked(console.StrGrid()).size(), 1U);
        EXPECT_LE(Marked(console.mStrGrid()).size(), 1U);
        EXPECT_GE(console.StrGrid()->ListCount(), 26);
        ExpectTexts();
    }
};

TEST_F(ShowTest, EveryCommandIsHarmlessWithNothingOpenAndDuringAScan) {
    CapturedStderr captured;
    Start();
    for (const std::string_view key : Keys())
        Choose(key);
    EXPECT_TRUE(Media().Loads("Mainform.QTM").empty());
    ExpectInvariants();

    MakeMedia("many", {});
    for (int n = 0; n < 40; ++n)
        static_cast<void>(Folder().Write("many/" + std::to_string(n) + ".mov", ""));
    ScanUntil(MakeMedia("many", {}), 5);
    for (const std::string_view key : Keys()) {
        Choose(key);
        TheRuntime().Threads().OneTurnEach();
    }
    Settle();
    EXPECT_EQ(Media().Loads("Mainform.QTM").size(), 2U) << "return, twice";
    EXPECT_EQ(Names(Console().StrGrid()).size(), 40U);
    ExpectInvariants();
    EXPECT_TRUE(captured.Lines().empty());
}

TEST_F(ShowTest, EightHoursOfRandomCommandsKeepTheRecordWhole) {
    std::string media[3];
    for (const int folder : {0, 1, 2}) {
        const std::string name = "show" + std::to_string(folder);
        media[folder] = MakeMedia(name, {"bad.mov", "bad.wav", "long.mov", "n.txt"});
        for (int n = 0; n < 20 * folder; ++n)
            for (const char* tail : {".mov", ".wav"})
                static_cast<void>(Folder().Write(name + "/" + std::to_string(n) + tail, ""));
    }
    for (const char* bad : {"bad.mov", "bad.wav"})
        Media().Script(bad, {.opens = false});
    Media().Script("long.mov", {.length = 220000.5});
    Media().Script("3.mov", {.length = 0.4});
    Media().Script("5.mov", {.length = 9.0, .dataEnd = 4.0});
    Media().SetDefaultMovie({.length = 37.4, .seekDelay = 80});
    WriteSettings(
        {{2, "false"}, {22, media[1]}, {23, media[2]}, {24, media[0]}, {33, media[1]}, {34, media[2]}});
    CapturedStderr captured;
    Start();
    Media().SetDrift("MonitorForm.QTM", {.rate = 1.0005, .startLag = 5});

    const std::vector<std::string_view> keys = Keys();
    std::mt19937 random(20261122);
    const auto pick = [&](std::uint32_t below) { return static_cast<std::int32_t>(random() % below); };
    const std::vector<std::function<void()>> acts = {
        [&] { Choose(keys[static_cast<std::size_t>(pick(static_cast<std::uint32_t>(keys.size())))]); },
        [&] {
            Monitor().ReportMenuChosen(
                keys[static_cast<std::size_t>(pick(static_cast<std::uint32_t>(keys.size())))]);
        },
        [&] { Console().StrGrid()->ReportSelection(pick(45) - 1); },
        [&] { Console().StrGrid()->ReportDoubleClick(); },
        [&] { Console().mStrGrid()->ReportDoubleClick(); },
        [&] { Console().StrGrid()->ReportHeadingClick(pick(3)); },
        [&] { Console().ListTab()->ReportPage(pick(2)); },
        [&] { Console().QTM_PosBar()->ReportPressAndValue(1, 1, pick(40)); },
        [&] { Console().VolumeProgress()->ReportMouseMove(1, 1, 355 + pick(45)); },
        [&] { Console().ReportMoved(pick(500), pick(500)); },
        [&] { Sound().Rate()->ReportValue(pick(11)); },
        [&] {
            if (pick(10) == 0)
                Console().Fold(1 + pick(3))->ReportClick();
        },
    };
    int opened = 0;
    for (int tick = 0; tick < 28800 && !HasFailure(); ++tick) {
        if (tick % 600 == 0 && !Console().List_Flag)
            Choose("ListLoopKey");
        if (pick(4) == 0)
            acts[static_cast<std::size_t>(pick(static_cast<std::uint32_t>(acts.size())))]();
        Advance(1000);
        opened += Console().FileOpen_Flag ? 1 : 0;
        ExpectInvariants();
        if (HasFailure())
            ADD_FAILURE() << "at tick " << tick;
    }
    EXPECT_GT(opened, 10000) << "most of the time something plays";
    EXPECT_TRUE(captured.Lines().empty());
}

} // namespace kirolane::tests
