#include "logic_test.h"

namespace kirolane::tests {

class SeekingTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 1000.5});
        StartWithMedia({"a.mov"});
        Open(0);
        Choose("PlayStatusChangeKey"); // paused: positions stay
    }
    static void ExpectPositions(double console, double monitor) {
        EXPECT_DOUBLE_EQ(Console().QTM()->Position(), console);
        EXPECT_DOUBLE_EQ(Monitor().QTM()->Position(), monitor);
    }
    void Place(double console, double monitor) {
        Do([=] {
            Console().QTM()->SetPosition(console);
            Monitor().QTM()->SetPosition(monitor);
        });
    }
};

TEST_F(SeekingTest, StepsMoveEachPlayerFromWhereItStands) {
    const std::pair<const char*, double> steps[] = {
        {"Frame5DownKey", -5}, {"Frame5UpKey", 5},      {"Frame30DownKey", -30},
        {"Frame30UpKey", 30},  {"FrameFreeUpKey", 120}, {"FrameFreeDownKey", -120},
    };
    for (const auto& [key, step] : steps) {
        for (Window* window : {static_cast<Window*>(&Console()), static_cast<Window*>(&Monitor())}) {
            SCOPED_TRACE(key);
            Place(500.75, 500.25);
            window->ReportMenuChosen(key);
            ExpectPositions(500.75 + step, 500.25 + step);
            EXPECT_EQ(Console().QTM_PosBar()->Value(), 500 + static_cast<int>(step));
            EXPECT_EQ(Console().PlayModeLabel()->Caption(), "一時停止");
        }
    }
    Place(3.0, 4.0);
    Choose("Frame5DownKey");
    ExpectPositions(0.0, 0.0);
    Place(990.0, 999.0);
    Console().QTM_FrameFreeUpButton()->ReportClick();
    ExpectPositions(1000.5, 1000.5);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 1000);
}

TEST_F(SeekingTest, TheFreeStepIsReadFromItsLine) {
    const std::pair<const char*, double> lines[] = {{"1", 60}, {"2", 90}, {"19", 600},
                                                    {"20", 0}, {"", 0},   {"x", 0}};
    for (const auto& [text, step] : lines) {
        SCOPED_TRACE(text);
        Do([text = text] { Console().Setting_Data.Set(12, text); });
        Place(10.0, 10.0);
        Choose("FrameFreeUpKey");
        ExpectPositions(10.0 + step, 10.0 + step);
        EXPECT_EQ(Console().QTM_PosBar()->Value(), 10 + static_cast<int>(step));
    }
}

TEST_F(SeekingTest, TheMarkIsAWholeSecondAndClearsTheDrift) {
    Place(12.9, 13.4);
    Choose("MarkSeekKey"); // none set
    ExpectPositions(12.9, 13.4);
    Choose("MarkKey");
    EXPECT_EQ(Console().Mark_Pos, 12);
    Place(50.0, 51.0);
    Do([] {
        Console().QTM_PosBar()->SetValue(50);
        Console().Rate_Flag = 1.2;
    });
    Monitor().ReportMenuChosen("MarkSeekKey");
    ExpectPositions(12.0, 12.0);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 50) << "the next tick moves it";
    EXPECT_EQ(Console().QTM()->Rate(), 1.2);
    EXPECT_EQ(Monitor().QTM()->Rate(), 1.2);
    EXPECT_FALSE(Console().Play_Flag);
    Advance(1000);
    EXPECT_EQ(Console().QTM_PosBar()->Value(), 12);
    Place(70.0, 70.0);
    Monitor().ReportMenuChosen("MarkKey");
    EXPECT_EQ(Console().Mark_Pos, 70);
}

TEST_F(SeekingTest, ThePersonsMoveOfTheSliderSeeksBothPlayersOnce) {
    Place(10.0, 10.5);
    const auto bar = Console().QTM_PosBar();
    bar->ReportPressAndValue(3, 3, 300);
    ExpectPositions(300.0, 300.0);
    EXPECT_FALSE(Console().PosBar_Flag);
    Do([] { Console().QTM_PosBar()->SetValue(400); });
    ExpectPositions(300.0, 300.0);
    Choose("PlayStatusChangeKey"); // a resume starts at the slider
    ExpectPositions(400.0, 400.0);
}

TEST_F(SeekingTest, WithNothingOpenNoCommandDoesAnything) {
    Choose("CloseKey");
    Media().ForgetOrders();
    Do([] { Console().Mark_Flag = true; });
    for (const char* key : {"Frame5DownKey", "Frame30UpKey", "FrameFreeUpKey", "MarkKey", "MarkSeekKey"})
        Choose(key);
    Do([] {
        Console().PosBar_Flag = true;
        Console().QTM_PosBar()->SetValue(1);
    });
    EXPECT_TRUE(Media().Orders().empty());
    EXPECT_TRUE(Console().PosBar_Flag);
    EXPECT_EQ(Console().Mark_Pos, 0);
}

} // namespace kirolane::tests
