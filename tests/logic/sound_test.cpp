#include "logic_test.h"

namespace kirolane::tests {

class SoundTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 100.5});
        Media().Script("s.wav", {.length = 200.5});
        Media().Script("t.mp3", {.length = 4.5});
        Media().Script("u.mid", {.length = 4.5});
        StartWithMedia({"a.mov", "b.mov"}, {"s.wav", "t.mp3", "u.mid", "w.asf", "x.au"});
    }
    static Ref<Listbox> List() { return Console().mStrGrid(); }
    static std::string Mode() { return Sound().PlayModeLabel()->Caption(); }
    static double Position() { return Sound().QTM()->Position(); }
};

TEST_F(SoundTest, ASoundHasAWindowOnlyWhileItIsOpen) {
    EXPECT_FALSE(Sound().Visible());
    OpenSound(0);
    EXPECT_TRUE(Sound().Visible());
    EXPECT_EQ(Mode(), "再生中");
    EXPECT_EQ(Sound().FileLabel()->Caption(), "s.wav");
    EXPECT_EQ(Sound().MediaType()->Caption(), "Wave");
    EXPECT_EQ(Sound().MaxTime()->Caption(), "00：03：20");
    EXPECT_EQ(Sound().QTM_PosBar()->Maximum(), 200);
    EXPECT_EQ(Sound().QTM()->Volume(), 205);
    EXPECT_TRUE(Sound().QTM()->Visible()) << "below the window's edge";
    EXPECT_EQ(List()->Cell(0, 2), "00：03：20");
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{0});
    EXPECT_EQ(Console().mFileNumberLabel()->Caption(), "1 / 5");
    EXPECT_EQ(Console().FocusControl()->Name(), "mStrGrid");

    Console().ListTab()->ReportPage(0);
    Choose("mCloseKey");
    EXPECT_FALSE(Sound().Visible());
    EXPECT_EQ(Sound().Title(), "00：00：00");
    EXPECT_EQ(Sound().MediaType()->Caption() + Sound().FileLabel()->Caption() + Mode(), "");
    EXPECT_EQ(Sound().QTM_PosBar()->Maximum(), 1);
    EXPECT_FALSE(Sound().QTM_PlayButton()->Enabled());
    EXPECT_TRUE(Marked(List()).empty());
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
}

TEST_F(SoundTest, MovieAndSoundRunBesideEachOther) {
    Open(0);
    OpenSound(0);
    EXPECT_TRUE(Console().QTM()->Running());
    Choose("mPlayStatusChangeKey");
    EXPECT_FALSE(Sound().QTM()->Running());
    EXPECT_TRUE(Console().QTM()->Running());
    Choose("mPlayStatusChangeKey");
    Monitor().ReportMenuChosen("PlayStatusChangeKey");
    EXPECT_TRUE(Sound().QTM()->Running());
    EXPECT_FALSE(Monitor().QTM()->Running());
    Choose("CloseKey");
    EXPECT_TRUE(Sound().QTM()->Running());
    EXPECT_EQ(Console().FileNumberLabel()->Caption(), "1 / 2") << "the flag names the sound list";
    EXPECT_EQ(Console().mFileNumberLabel()->Caption(), "5");
}

TEST_F(SoundTest, TheWindowsTitleTellsTheMoviesTimes) {
    OpenSound(0);
    Advance(3000);
    EXPECT_EQ(Sound().Title(), "00：00：00 / 00：00：00");
    EXPECT_EQ(Sound().PosTime()->Caption(), "00：00：03");
    EXPECT_EQ(Sound().QTM_PosBar()->Value(), 3);
    Open(0);
    Advance(90000);
    EXPECT_EQ(Sound().Title(), "00：01：30 / 00：01：40");
    EXPECT_EQ(Sound().PosTime()->Caption(), "00：01：33");
}

TEST_F(SoundTest, APauseGoesOnFromThePlayerAndAStopRewinds) {
    OpenSound(0);
    Advance(5700);
    Sound().QTM_PlayButton()->ReportClick();
    EXPECT_EQ(Mode(), "一時停止");
    Do([] { Sound().QTM_PosBar()->SetValue(100); });
    Sound().QTM_PlayButton()->ReportClick();
    EXPECT_NEAR(Position(), 5.7, 1e-9) << "not the slider's second";
    Sound().QTM_PosBar()->ReportPressAndValue(1, 1, 150);
    EXPECT_EQ(Position(), 150.0);
    Choose("mStopKey");
    EXPECT_EQ(Mode(), "停止");
    EXPECT_EQ(Position(), 0.0);
    EXPECT_EQ(Sound().QTM_PosBar()->Value(), 0);
}

TEST_F(SoundTest, OnlyThirtySecondsBackMovesTheSliderAtOnce) {
    OpenSound(0);
    Choose("mPlayStatusChangeKey");
    const std::tuple<const char*, double, bool> seeks[] = {
        {"mFrame5UpKey", 5.0, false}, {"mFrame30DownKey", -30.0, true}, {"mFrameFreeUpKey", 90.0, false}};
    for (const auto& [key, step, moves] : seeks) {
        Do([] {
            Console().Setting_Data.Set(14, "2");
            Sound().QTM()->SetPosition(100.5);
            Sound().QTM_PosBar()->SetValue(7);
        });
        Choose(key);
        EXPECT_DOUBLE_EQ(Position(), 100.5 + step) << key;
        EXPECT_EQ(Sound().QTM_PosBar()->Value(), moves ? 70 : 7) << key;
        EXPECT_FALSE(Sound().QTM()->Running()) << key;
    }
    Sound().QTM_FrameFreeUpButton()->ReportClick();
    EXPECT_DOUBLE_EQ(Position(), 200.5);
}

TEST_F(SoundTest, TheMarkIsSetOnTheConsoleAndOnlyReachedOnTheMonitor) {
    OpenSound(0);
    Advance(12900);
    Monitor().ReportMenuChosen("mMarkKey");
    EXPECT_FALSE(Console().mMark_Flag);
    Choose("mMarkKey");
    EXPECT_EQ(Console().mMark_Pos, 12);
    Advance(20000);
    Monitor().ReportMenuChosen("mMarkKey");
    EXPECT_EQ(Position(), 12.0);
    OpenSound(1);
    EXPECT_FALSE(Console().mMark_Flag);
}

TEST_F(SoundTest, TheEndRepeatsStopsOrGoesOn) {
    OpenSound(1);
    Advance(4000);
    EXPECT_EQ(Mode(), "停止");
    EXPECT_FALSE(Console().mPlay_Flag);
    EXPECT_EQ(Position(), 0.0);

    Choose("mLoopKey");
    EXPECT_EQ(Console().mLoopLabel()->Caption(), "→");
    Choose("mPlayStatusChangeKey");
    Advance(4500);
    EXPECT_NEAR(Position(), 0.5, 1e-9);

    Choose("mListLoopKey");
    EXPECT_EQ(Console().mLoopLabel()->Caption(), "↓");
    EXPECT_EQ(Console().LoopLabel()->Caption(), "");
    Advance(4000);
    EXPECT_EQ(Sound().FileLabel()->Caption(), "u.mid");
    EXPECT_EQ(Sound().MediaType()->Caption(), "MIDI");
    EXPECT_EQ(Console().GetListIndex_Flag, 1);
    Advance(5000);
    EXPECT_EQ(Sound().FileLabel()->Caption(), "w.asf");
    EXPECT_EQ(Sound().MediaType()->Caption(), "") << "listed, without a type";
}

TEST_F(SoundTest, AFailedOpenLeavesNoWindow) {
    Media().Script("x.au", {.opens = false});
    OpenSound(0);
    OpenSound(4);
    EXPECT_EQ(List()->Cell(4, 2), kFailed);
    EXPECT_FALSE(Sound().Visible());
    EXPECT_TRUE(Marked(List()).empty());
    EXPECT_EQ(Console().mFile_Number, 4);
}

TEST_F(SoundTest, VolumeAndMuteAreTheSoundsOwn) {
    OpenSound(0);
    Sound().VolumeProgress()->ReportMouseMove(1, 1, 68); // bands of its own
    EXPECT_EQ(Sound().VolumeProgress()->Value(), 60);
    Sound().VolumeProgress()->ReportMouseMove(1, 1, 51); // beside them
    EXPECT_EQ(Console().mVolume_Flag, 60);
    Do([] { Console().mVolume_Flag = 33; });
    Choose("mVolumeUpKey");
    EXPECT_EQ(Sound().QTM()->Volume(), 90);
    EXPECT_EQ(Sound().VolumeProgress()->Value(), 34) << "no lag here";
    EXPECT_EQ(Sound().VolumeLabel()->Caption(), "Volume：  34");
    Monitor().ReportMenuChosen("mMuteKey");
    EXPECT_EQ(Sound().QTM()->Volume(), 0);
    EXPECT_FALSE(Console().Mute_Flag);
    Choose("mVolumeDownKey");
    EXPECT_FALSE(Console().mMute_Flag);
    EXPECT_EQ(Sound().QTM()->Volume(), 88);
    EXPECT_EQ(Console().Volume_Flag, 80);
}

TEST_F(SoundTest, TheRateSliderActsOnTheSoundAlone) {
    Choose("mSpeedUp");
    EXPECT_EQ(Sound().Rate()->Value(), 6);
    EXPECT_EQ(Console().mRate_Flag, 1.05);
    OpenSound(0);
    Advance(1000);
    EXPECT_NEAR(Position(), 1.05, 1e-9);
    Sound().Rate()->ReportValue(0);
    EXPECT_EQ(Sound().QTM()->Rate(), 0.75);
    EXPECT_EQ(Console().QTM()->Rate(), 1.0);
}

TEST_F(SoundTest, TheWindowBindsNoKeyAndLeavesTheKeyboardToTheList) {
    OpenSound(0);
    Sound().ReportMenuChosen("mPlayStatusChangeKey");
    EXPECT_EQ(Mode(), "再生中");
    Do([] { Console().Rate()->SetFocus(); });
    Sound().ReportActivated();
    EXPECT_EQ(Console().FocusControl()->Name(), "mStrGrid");
    Sound().ReportCloseRequested(); // its close box: the sound plays on
    EXPECT_FALSE(Sound().Visible());
    EXPECT_TRUE(Sound().QTM()->Running());
}

} // namespace kirolane::tests
