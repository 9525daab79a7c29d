#include "logic/shell/menu_table.h"
#include "logic_test.h"
#include "support/captured_stderr.h"

#include <random>

namespace kirolane::tests {

class ShowTest : public LogicTest {};

TEST_F(ShowTest, EightHoursOfRandomCommandsKeepTheRecordWhole) {
    std::vector<std::string_view> keys; // every command but that which ends the program
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows)
            if (row.text != "-" && row.name != "FileQuit")
                keys.push_back(row.name);
    CapturedStderr captured;
    Start();
    for (const std::string_view key : keys) // while there is nothing to open
        Choose(key);
    EXPECT_TRUE(Media().Loads("Mainform.QTM").empty());
    ExpectWhole();
    ScanUntil(MakeMany("many", 40), 5, false);
    for (const std::string_view key : keys) {
        Choose(key);
        TheRuntime().Threads().OneTurnEach();
    }
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()).size(), 40U);
    ExpectWhole();
    End();

    std::string media[3];
    for (const int folder : {0, 1, 2}) {
        const std::string name = "show" + std::to_string(folder);
        MakeMedia(name, {"bad.mov", "bad.wav", "long.mov", "n.txt"});
        media[folder] = MakeMany(name, 20 * folder);
    }
    for (const char* bad : {"bad.mov", "bad.wav"})
        Media().Script(bad, {.opens = false});
    Media().Script("long.mov", {.length = 220000.5});
    Media().Script("3.mov", {.length = 0.4});
    Media().Script("5.mov", {.length = 9.0, .dataEnd = 4.0});
    Media().SetDefaultMovie({.length = 37.4, .seekDelay = 80});
    WriteSettings(
        {{2, "false"}, {22, media[1]}, {23, media[2]}, {24, media[0]}, {33, media[1]}, {34, media[2]}});
    Start();
    Media().SetDrift("MonitorForm.QTM", {.rate = 1.0005, .startLag = 5});

    std::mt19937 random(20261122);
    const auto pick = [&](std::size_t below) { return static_cast<std::int32_t>(random() % below); };
    const auto anyKey = [&] { return keys[static_cast<std::size_t>(pick(keys.size()))]; };
    const std::vector<std::function<void()>> acts = {
        [&] { Choose(anyKey()); },
        [&] { Monitor().ReportMenuChosen(anyKey()); },
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
            acts[static_cast<std::size_t>(pick(acts.size()))]();
        Advance(1000);
        opened += Console().FileOpen_Flag ? 1 : 0;
        ExpectWhole();
        EXPECT_GE(Console().StrGrid()->ListCount(), 26);
        if (HasFailure())
            ADD_FAILURE() << "at tick " << tick;
    }
    EXPECT_GT(opened, 10000) << "most of the time something plays";
    EXPECT_TRUE(captured.Lines().empty());
}

} // namespace kirolane::tests
