// Twins in step: the audience's player plays for both, and nobody can tell but by the size of the pictures.

#include "engine_test.h"
#include "pipe.h"

namespace kirolane::tests {

class SharedDecoding : public EngineTest {
protected:
    SharedDecoding() { Begin(); }
    void Begin(const mpv::MpvOptions& options = {.audioOutput = "null"}) {
        MakePlayers(options);
        Stage().Frames()->SetSize(640, 480);
        Preview().Frames()->SetSize(320, 240);
    }
    int Width() { return Seen(Preview()).width; }
    bool Shares() { return Width() == 640; }
    void PlayShared() {
        Unload();
        PlayTwins(ClipPath("clip.mp4"));
        ASSERT_TRUE(WaitUntil([&] { return Shares() && Preview().Position() > 0.7; }));
    }
    void ExpectPreviewInTime() { EXPECT_NEAR(Grey(Preview()), GreyAt(Preview().Position()), 8.0); }
    /// Lets them play to the end, which is one for both.
    void PlayOut(const std::function<void()>& watch = [] {}) {
        EXPECT_TRUE(WaitUntil([&] {
            watch();
            const double distance = Distance();
            EXPECT_TRUE(Stage().AtEnd() || std::abs(distance) < 0.02) << distance;
            return Preview().AtEnd();
        }));
        EXPECT_TRUE(Stage().AtEnd() && Shares());
        EXPECT_EQ(Preview().Position(), Preview().Duration());
    }
};

TEST_F(SharedDecoding, PauseSeekRateAndTheNextFileGoOnAsWithTwoDecoders) {
    PlayShared();
    OrderTwins({.running = false, .seekTo = {}});
    EXPECT_TRUE(Shows(Preview(), Preview().Position()));
    OrderTwins({.running = true, .seekTo = 1.0, .rate = 1.25});
    EXPECT_TRUE(Reaches(Preview(), 2.5));
    EXPECT_NEAR(Distance(), 0.0, 0.01);
    ExpectPreviewInTime();
    EXPECT_TRUE(Shares());

    Preview().Release();
    Stage().Release();
    PlayTwins(ClipPath("short.mp4"));
    EXPECT_TRUE(Preview().Frames()->HasPicture());
    EXPECT_TRUE(Shows(Preview(), 1.0));
    PlayOut();
    OrderTwins({.running = true, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Preview(), 0.5));
}

TEST_F(SharedDecoding, AFarSmallerPreviewGetsThePicturesInItsOwnSize) {
    Stage().Frames()->SetSize(1280, 960);
    PlayTwins(ClipPath("clip.mp4"));
    EXPECT_TRUE(WaitUntil([&] { return Width() == 320 && Grey(Preview()) > GreyAt(0.5); }));
    OrderTwins({.running = false, .seekTo = {}});
    Preview().Frames()->SetSize(640, 480); // halted: until the next picture there is only the whole one
    EXPECT_EQ(Width(), 1280);
    Preview().Frames()->SetSize(300, 200);
    OrderTwins({.running = false, .seekTo = 3.0});
    EXPECT_TRUE(Shows(Preview(), 3.0) && Width() == 300 && Preview().Position() == 3.0);
}

TEST_F(SharedDecoding, AnOrderToOneAloneGivesEachItsOwnPictures) {
    for (const bool running : {true, false}) {
        PlayShared();
        OrderTwins({.running = running, .seekTo = {}});
        Order(Preview(), {.running = false, .seekTo = 4.5});
        EXPECT_TRUE(Shows(Preview(), 4.5));
        EXPECT_FALSE(Shares());
        EXPECT_LT(Grey(Stage()), GreyAt(4.0));
        EXPECT_EQ(Preview().Position(), 4.5);
        OrderTwins({.running = true, .seekTo = 2.0});
        EXPECT_TRUE(WaitUntil([&] { return Shares(); })) << "together again";
    }
    OrderTwins({.running = false, .seekTo = 3.0});
    EXPECT_TRUE(Shows(Preview(), 3.0));
    ASSERT_TRUE(Stage().Load(ClipPath("short.mp4")));
    Order(Stage(), {.running = false, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Stage(), 0.0));
    EXPECT_TRUE(WaitUntil([&] { return !Shares(); }));
    EXPECT_TRUE(Shows(Preview(), 3.0));

    PlayShared();
    OrderTwins({.running = true, .seekTo = {}, .rate = 1.25});
    Order(Stage(), {.running = true, .seekTo = {}});
    EXPECT_TRUE(WaitUntil([&] { return !Shares() && Distance() < -0.2; }));
    OrderTwins({.running = true, .seekTo = 1.0});
    ASSERT_TRUE(WaitUntil([&] { return Shares() && Preview().Position() > 1.5; }));
    const double before = Preview().Position();
    Order(Stage(), {.unload = true, .seekTo = {}});
    EXPECT_NEAR(Preview().Position(), before, 0.05);
    EXPECT_TRUE(WaitUntil([&] { return !Shares(); }));
    EXPECT_TRUE(Preview().Frames()->HasFrame());
    EXPECT_NEAR(Grey(Preview()), GreyAt(before), 10.0) << "no jump";
    EXPECT_TRUE(Reaches(Preview(), 3.0));
    ExpectPreviewInTime();
}

TEST_F(SharedDecoding, TheDistanceThatOrdersGiveStays) {
    const struct {
        double preview, stage, rate, within;
    } cases[] = {{0.3, 0.33, 1.0, 0.002}, {0.2, 0.0, 1.0, 0.06}, {0.0, 0.12, 1.25, 0.06}};
    ASSERT_TRUE(LoadTwins(ClipPath("clip.mp4")));
    for (const auto& [preview, stage, rate, within] : cases) {
        for (const bool running : {false, true}) {
            const double by = running ? 1.0 : 0.0;
            Order({{&Preview(), {.running = running, .seekTo = preview + by, .rate = rate}},
                   {&Stage(), {.running = running, .seekTo = stage + by, .rate = rate}}});
            EXPECT_EQ(Preview().Position(), preview + by);
            EXPECT_EQ(Stage().Position(), stage + by);
        }
        ASSERT_TRUE(Reaches(Stage(), 2.0));
        EXPECT_NEAR(Distance(), stage - preview, within);
    }
}

TEST_F(SharedDecoding, SeeksThatTakeLongerThanAnybodyWaitsNeitherPartTheTwinsNorBringTheEndEarly) {
    Begin({.audioOutput = "null", .seekLimit = std::chrono::milliseconds(1)});
    ASSERT_TRUE(LoadTwins(ClipPath("far.mp4")));
    OrderTwins({.running = true, .seekTo = 4.6});
    bool there = false;
    PlayOut([&] {
        const double position = Preview().Position();
        there = there || Grey(Stage()) > GreyAt(4.5);
        EXPECT_TRUE(there || position < 4.7) << position << " is ahead of what the audience sees";
    });
    EXPECT_NEAR(Grey(Stage()), GreyAt(4.96), 5.0) << "it has seen all";
    OrderTwins({.running = true, .seekTo = 4.0});
    OrderTwins({.running = true, .seekTo = 0.5}); // before it is there
    EXPECT_TRUE(Reaches(Preview(), 0.7));
    EXPECT_LT(Preview().Position(), 2.0);
}

TEST_F(SharedDecoding, TwinsThatStartInOneHandlerStartTogether) {
    Begin({.audioOutput = "null", .seekLimit = std::chrono::seconds(8)});
    ASSERT_TRUE(LoadTwins(ClipPath("far.mp4")) && Preview().Load(ClipPath("clip.mp4")));
    OrderTwins({.running = true, .seekTo = 4.5}); // which takes the stage most of a second
    EXPECT_TRUE(WaitUntil([&] {
        EXPECT_NEAR(Distance(), 0.0, 0.1);
        return Stage().Position() > 4.7;
    }));
}

TEST_F(SharedDecoding, AnOutputThatHangsHoldsThePositionAndBringsNoEnd) {
    const TemporaryFolder folder;
    Pipe output(folder.Path("out.stage.wav")); // takes no more until somebody reads
    Begin({.audioOutput = "pcm", .audioFileBase = folder.Path("out")});
    PlayTwins(ClipPath("short.mp4"));
    EXPECT_FALSE(WaitUntil([&] { return Preview().Position() > 2.0 || Stage().Position() > 2.0; }, 4.0));
    PlayOut([&] { output.Drain(); });
    EXPECT_NEAR(Grey(Stage()), GreyAt(2.96), 5.0);
    EndPlayers();
}

} // namespace kirolane::tests
