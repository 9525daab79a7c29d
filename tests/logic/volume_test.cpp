#include "logic/video/volume_table.h"
#include "twin_test.h"

namespace kirolane::tests {

class VolumeTest : public TwinTest {
protected:
    void SetUp() override { StartWithFiles({"a"}); }

    static std::int32_t Level() { return Either(Console().Volume_Flag, Console().mVolume_Flag); }
    static std::int32_t Heard() { return Either(Monitor().QTM(), Sound().QTM())->Volume(); }
    void SetLevel(std::int32_t level) {
        Do([=] {
            (IsSound() ? Console().mVolume_Flag : Console().Volume_Flag) = level;
            IsSound() ? Console().mVolumeSave_Func() : Console().VolumeSave_Func();
        });
    }
    static void Expect(const std::string& number, std::int32_t volume, std::int32_t bar) {
        EXPECT_EQ(Level(), std::stoi(number));
        EXPECT_EQ(Either(Console().mVolume_Flag, Console().Volume_Flag), 80) << "the other transport's";
        EXPECT_EQ(Heard(), volume);
        EXPECT_EQ(In<ProgressBar>("VolumeProgress")->Value(), bar);
        EXPECT_EQ(Text("VolumeLabel"), "Volume：" + number);
    }
    static void ExpectMuted(bool muted) {
        EXPECT_EQ(Either(Console().Mute_Flag, Console().mMute_Flag), muted);
        EXPECT_FALSE(Either(Console().mMute_Flag, Console().Mute_Flag)) << "the other transport's";
        EXPECT_EQ(In<ProgressBar>("VolumeProgress")->Enabled(), !muted);
        EXPECT_EQ(In<StaticText>("VolumeLabel")->Enabled(), !muted);
        EXPECT_EQ(Heard(), muted ? 0 : PlayerVolume(Level()));
    }
};

INSTANTIATE_TEST_SUITE_P(Of, VolumeTest, ::testing::Bool(), TwinName);

TEST(LevelsTest, RiseToThePlayersScaleWithOneDip) {
    for (std::int32_t level = 1; level <= 100; ++level) {
        const std::int32_t step = PlayerVolume(level) - PlayerVolume(level - 1);
        EXPECT_TRUE(level == 74 || level == 75 || (step >= 1 && step <= 4)) << level;
    }
    EXPECT_EQ(PlayerVolume(0), 0);
    EXPECT_EQ(PlayerVolume(100), 256);
}

TEST_P(VolumeTest, KeysStepOneLevelWithinTheEndsAndTheMoviesBarLagsAtThree) {
    const std::tuple<std::int32_t, const char*, const char*, std::int32_t, std::int32_t> rows[] = {
        {99, "VolumeUpKey", "100", 256, 100},
        {100, "VolumeUpKey", "100", 256, 100},
        {1, "VolumeDownKey", "   0", 0, 0},
        {0, "VolumeDownKey", "   0", 0, 0},
        {9, "VolumeUpKey", "  10", 27, 10},
        {33, "VolumeUpKey", "  34", 90, Either(33, 34)},
        {34, "VolumeUpKey", "  35", 92, Either(34, 35)},
        {35, "monitor VolumeUpKey", "  36", 94, Either(35, 36)},
        {38, "monitor VolumeDownKey", "  37", 96, 37}};
    for (const auto& [from, key, number, volume, bar] : rows) {
        SetLevel(from);
        Act(key);
        Expect(number, volume, bar);
    }
}

TEST_P(VolumeTest, AMuteOutlivesTheFileAndAStepEndsItButAtTheEnds) {
    Act("open 0");
    ExpectMuted(false);
    Act("CloseKey");
    for (const char* end : {"VolumeUpKey", "MuteKey"}) { // at first with nothing open
        for (const char* act : {"MuteKey", "open 0"}) {
            Act(act);
            ExpectMuted(true);
        }
        Act(end);
        ExpectMuted(false);
    }
    const std::tuple<std::int32_t, const char*, bool> rows[] = {{50, "VolumeUpKey", false},
                                                                {50, "VolumeDownKey", false},
                                                                {100, "VolumeUpKey", true},
                                                                {0, "VolumeDownKey", true}};
    for (const auto& [level, key, muted] : rows) {
        SetLevel(level);
        Act("monitor MuteKey");
        ExpectMuted(true);
        Act(key);
        ExpectMuted(muted);
        if (muted)
            Act("MuteKey");
        ExpectMuted(false);
    }
}

TEST_P(VolumeTest, ThePointerOverTheBarGivesTens) {
    const auto pointAt = [](std::int32_t y) { In<ProgressBar>("VolumeProgress")->ReportMouseMove(5, 5, y); };
    for (const std::int32_t y : {Either(375, 66), Either(378, 70)}) {
        SetLevel(55);
        pointAt(y);
        Expect("  60", 155, 60);
    }
    SetLevel(55);
    for (const std::int32_t y : {Either(359, 51), Either(396, 88)}) { // beside the bands
        Do([] { In<StaticText>("VolumeLabel")->SetEnabled(false); });
        pointAt(y);
        Expect("  55", 141, 55);
        EXPECT_TRUE(In<StaticText>("VolumeLabel")->Enabled());
    }
    Act("MuteKey"); // the bar is disabled and gets no moves
    pointAt(Either(394, 86));
    Expect("  55", 0, 55);
}

} // namespace kirolane::tests
