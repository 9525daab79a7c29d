#include "logic/video/volume_table.h"
#include "logic_test.h"

namespace kirolane::tests {

class VolumeTest : public LogicTest {
protected:
    void SetUp() override { StartWithMedia({"a.mov"}); }

    void SetLevel(std::int32_t level) {
        Do([=] {
            Console().Volume_Flag = level;
            Console().VolumeSave_Func();
        });
    }
    static void Expect(std::int32_t level, std::int32_t volume, std::int32_t bar, const char* text) {
        EXPECT_EQ(Console().Volume_Flag, level);
        EXPECT_EQ(Monitor().QTM()->Volume(), volume);
        EXPECT_EQ(Console().QTM()->Volume(), 0);
        EXPECT_EQ(Console().VolumeProgress()->Value(), bar);
        EXPECT_EQ(Console().VolumeLabel()->Caption(), text);
    }
    void MoveTo(std::int32_t mouseY) { Console().VolumeProgress()->ReportMouseMove(5, 5, mouseY); }
};

TEST_F(VolumeTest, LevelsRiseToThePlayersScaleWithOneDip) {
    for (std::int32_t level = 1; level <= 100; ++level) {
        const std::int32_t step = PlayerVolume(level) - PlayerVolume(level - 1);
        const bool dip = level == 74 || level == 75;
        EXPECT_TRUE(dip || (step >= 1 && step <= 4)) << level;
    }
    EXPECT_EQ(PlayerVolume(0), 0);
    EXPECT_EQ(PlayerVolume(100), 256);
}

TEST_F(VolumeTest, KeysStepOneLevelWithinTheEnds) {
    SetLevel(99);
    Choose("VolumeUpKey");
    Choose("VolumeUpKey");
    Expect(100, 256, 100, "Volume：100");
    SetLevel(1);
    Choose("VolumeDownKey");
    Choose("VolumeDownKey");
    Expect(0, 0, 0, "Volume：   0");
}

TEST_F(VolumeTest, TheBarLagsAtThreeLevels) {
    SetLevel(33);
    Choose("VolumeUpKey");
    Expect(34, 90, 33, "Volume：  34");
    Choose("VolumeUpKey");
    Expect(35, 92, 34, "Volume：  35");
    Choose("VolumeUpKey");
    Expect(36, 94, 35, "Volume：  36");
    Choose("VolumeUpKey");
    Expect(37, 96, 37, "Volume：  37");
}

TEST_F(VolumeTest, AStepUnmutesButNotAtTheEnds) {
    Open(0);
    SetLevel(50);
    Choose("MuteKey");
    EXPECT_EQ(Monitor().QTM()->Volume(), 0);
    EXPECT_EQ(Console().VolumeLabel()->Caption(), "Volume：  50");
    Choose("VolumeUpKey");
    EXPECT_FALSE(Console().Mute_Flag);
    EXPECT_TRUE(Console().VolumeProgress()->Enabled());
    Expect(51, 130, 51, "Volume：  51");

    for (const auto& [level, key] : {std::pair{100, "VolumeUpKey"}, std::pair{0, "VolumeDownKey"}}) {
        SetLevel(level);
        Monitor().ReportMenuChosen("MuteKey");
        Choose(key);
        EXPECT_TRUE(Console().Mute_Flag);
        EXPECT_EQ(Console().Volume_Flag, level);
        Choose("MuteKey");
        EXPECT_EQ(Monitor().QTM()->Volume(), PlayerVolume(level));
    }
}

TEST_F(VolumeTest, ThePointerOverTheBarGivesTens) {
    MoveTo(378);
    Expect(60, 155, 60, "Volume：  60");
    SetLevel(55);
    for (const std::int32_t y : {359, 396}) {
        Do([] { Console().VolumeLabel()->SetEnabled(false); });
        MoveTo(y);
        Expect(55, 141, 55, "Volume：  55");
        EXPECT_TRUE(Console().VolumeLabel()->Enabled());
    }
    Choose("MuteKey"); // the bar is disabled and gets no moves
    MoveTo(394);
    Expect(55, 0, 55, "Volume：  55");
}

} // namespace kirolane::tests
