#include "logic_test.h"

namespace kirolane::tests {

/// What only the sound has: a window of its own, beside the movie.
class SoundTest : public LogicTest {
protected:
    void SetUp() override {
        Media().Script("a.mov", {.length = 100.5});
        Media().Script("a.wav", {.length = 200.5});
        StartWithFiles({"a", "b"});
    }
};

TEST_F(SoundTest, ASoundHasAWindowOnlyWhileItIsOpen) {
    OpenSound(0);
    EXPECT_TRUE(Sound().Visible());
    Choose("mCloseKey");
    EXPECT_FALSE(Sound().Visible());

    Media().Script("b.wav", {.opens = false});
    OpenSound(0);
    Sound().ReportMenuChosen("mPlayStatusChangeKey"); // it binds no key
    Sound().ReportCloseRequested();                   // its close box: the sound plays on
    EXPECT_FALSE(Sound().Visible());
    EXPECT_TRUE(Sound().QTM()->Running());
    OpenSound(0);
    EXPECT_TRUE(Sound().Visible());
    OpenSound(1);
    EXPECT_FALSE(Sound().Visible());
}

TEST_F(SoundTest, MovieAndSoundRunBesideEachOther) {
    OpenSound(0);
    Advance(3000);
    EXPECT_EQ(Sound().Title(), "00：00：00 / 00：00：00") << "the movie's times";
    Open(0);
    Advance(90000);
    EXPECT_EQ(Sound().Title(), "00：01：30 / 00：01：40");
    EXPECT_EQ(Sound().PosTime()->Caption(), "00：01：33");
    OpenSound(0);
    Choose("CloseKey");
    EXPECT_TRUE(Sound().QTM()->Running());
    EXPECT_EQ(Console().FileNumberLabel()->Caption(), "1 / 2") << "the flag names the sound list";
    EXPECT_EQ(Console().mFileNumberLabel()->Caption(), "2");
    ExpectWhole();
}

} // namespace kirolane::tests
