// Twins in step: the audience's player decodes for both, and nobody can tell but by the size of the pictures.

#include "engine_test.h"

#include <cmath>

namespace kirolane::tests {

class SharedDecoding : public EngineTest {
protected:
    SharedDecoding() {
        Stage().Frames()->SetSize(640, 480);
        Preview().Frames()->SetSize(320, 240);
    }
    void Play(const std::string& clip, double from = 0.0) {
        ASSERT_TRUE(Preview().Load(ClipPath(clip)) && Stage().Load(ClipPath(clip)));
        OrderTwins({.running = true, .seekTo = from});
    }
    bool Shares() {
        int width = 0;
        Preview().Frames()->Visit([&](const FrameView& view) { width = view.width; });
        return width == 640;
    }
    void PlayShared(const std::string& clip) {
        Play(clip);
        ASSERT_TRUE(WaitUntil([&] { return Shares() && Preview().Position() > 0.7; }));
    }
    bool Shows(PlayerEngine& engine, double seconds) {
        return WaitUntil([&] { return std::abs(*Grey(engine) - GreyAt(seconds)) < 5.0; });
    }
    double Distance() { return Stage().Position() - Preview().Position(); }
};

TEST_F(SharedDecoding, PauseSeekRateAndTheNextFileGoOnAsWithTwoDecoders) {
    PlayShared("clip.mp4");
    EXPECT_NEAR(Distance(), 0.0, 0.04);
    OrderTwins({.running = false, .seekTo = {}});
    EXPECT_TRUE(Shows(Preview(), Preview().Position()));
    OrderTwins({.running = false, .seekTo = 4.0});
    EXPECT_TRUE(Shows(Preview(), 4.0));
    EXPECT_EQ(Preview().Position(), 4.0);
    OrderTwins({.running = true, .seekTo = 1.0, .rate = 1.25});
    EXPECT_TRUE(WaitUntil([&] { return Preview().Position() > 2.5; }));
    EXPECT_NEAR(Distance(), 0.0, 0.06);
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
    EXPECT_TRUE(Shares());

    Preview().Release();
    Stage().Release();
    Play("short.mp4");
    EXPECT_TRUE(Preview().Frames()->HasPicture());
    EXPECT_TRUE(Shows(Preview(), 1.0));
    EXPECT_TRUE(WaitUntil([&] { return Preview().AtEnd() && Stage().AtEnd(); }));
    EXPECT_EQ(Preview().Position(), Preview().Duration());
    OrderTwins({.running = true, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Preview(), 0.5));
}

TEST_F(SharedDecoding, AnOrderToOneAloneGivesEachItsOwnPictures) {
    for (const bool running : {true, false}) {
        PlayShared("clip.mp4");
        OrderTwins({.running = running, .seekTo = {}});
        Order(Preview(), {.running = false, .seekTo = 4.5});
        EXPECT_TRUE(Shows(Preview(), 4.5));
        EXPECT_FALSE(Shares());
        EXPECT_LT(*Grey(Stage()), GreyAt(4.0));
        EXPECT_EQ(Preview().Position(), 4.5);
        OrderTwins({.running = true, .seekTo = 2.0});
        EXPECT_TRUE(WaitUntil([&] { return Shares(); })) << "together again";
        Unload({&Preview(), &Stage()});
    }
    PlayShared("clip.mp4");
    OrderTwins({.running = false, .seekTo = 3.0});
    EXPECT_TRUE(Shows(Preview(), 3.0));
    ASSERT_TRUE(Stage().Load(ClipPath("short.mp4")));
    Order(Stage(), {.running = false, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Stage(), 0.0));
    EXPECT_TRUE(WaitUntil([&] { return !Shares(); }));
    EXPECT_TRUE(Shows(Preview(), 3.0));
    Unload({&Preview(), &Stage()});

    PlayShared("clip.mp4");
    Unload({&Stage()});
    EXPECT_TRUE(WaitUntil([&] { return Preview().Frames()->HasFrame() && !Shares(); }));
    EXPECT_TRUE(WaitUntil([&] { return Preview().Position() > 3.0; }));
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
}

TEST_F(SharedDecoding, SoundThatEndsBeforeThePicturesDoesNotEndTheMovie) {
    PlayShared("brief_sound.mp4");
    ASSERT_TRUE(WaitUntil([&] { return Stage().Position() > 3.5; }));
    EXPECT_FALSE(Preview().AtEnd());
    EXPECT_NEAR(Distance(), 0.0, 0.06);
    OrderTwins({.running = false, .seekTo = {}});
    const double halted = Preview().Position();
    OrderTwins({.running = false, .seekTo = 3.0}); // where there is no sound
    EXPECT_TRUE(Shows(Preview(), 3.0));
    EXPECT_EQ(Preview().Position(), 3.0);
    EXPECT_FALSE(Preview().AtEnd());
    OrderTwins({.running = true, .seekTo = {}});
    EXPECT_TRUE(WaitUntil([&] { return Preview().Position() > halted; }));
    EXPECT_NEAR(Distance(), 0.0, 0.06);
    EXPECT_TRUE(WaitUntil([&] { return Preview().AtEnd() && Stage().AtEnd(); }));
    EXPECT_EQ(Preview().Position(), Preview().Duration());
    OrderTwins({.running = true, .seekTo = 1.0});
    EXPECT_TRUE(WaitUntil([&] { return Preview().Position() > 1.5; }));
    EXPECT_NEAR(Distance(), 0.0, 0.06);
}

TEST_F(SharedDecoding, SoundThatBeginsAfterThePicturesDoesNotMoveThePosition) {
    Play("late_sound.mkv");
    ASSERT_TRUE(WaitUntil([&] { return Stage().Position() > 3.0; }));
    EXPECT_NEAR(Distance(), 0.0, 0.06);
    OrderTwins({.running = true, .seekTo = 0.5}); // where there is no sound
    ASSERT_TRUE(WaitUntil([&] { return Preview().Position() > 1.2; }));
    EXPECT_LT(Preview().Position(), 1.8);
    EXPECT_NEAR(Distance(), 0.0, 0.06);
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
}

TEST_F(SharedDecoding, DataThatEndEarlyEndBoth) {
    Play("early.mp4");
    EXPECT_TRUE(WaitUntil([&] { return Preview().AtEnd() && Stage().AtEnd(); }));
    EXPECT_EQ(Preview().Position(), Preview().Duration());
}

TEST_F(SharedDecoding, AMovieWithoutSoundIsDecodedTwice) {
    Play("silent.mp4");
    ASSERT_TRUE(WaitUntil([&] { return Stage().Position() > 3.0; }));
    EXPECT_FALSE(Shares());
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
}

} // namespace kirolane::tests
