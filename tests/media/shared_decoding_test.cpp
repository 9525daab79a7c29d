// Twins in step: the audience's player plays for both, and nobody can tell but by the size of the pictures.

#include "engine_test.h"
#include "support/temporary_folder.h"

#include <array>
#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::tests {

class SharedDecoding : public EngineTest {
protected:
    explicit SharedDecoding(mpv::MpvOptions options = {.audioOutput = "null"})
        : EngineTest(std::move(options)) {
        Stage().Frames()->SetSize(640, 480);
        Preview().Frames()->SetSize(320, 240);
    }
    int Width() {
        int width = 0;
        Preview().Frames()->Visit([&](const FrameView& view) { width = view.width; });
        return width;
    }
    bool Shares() { return Width() == 640; }
    void PlayShared(const std::string& clip) {
        PlayTwins(ClipPath(clip));
        ASSERT_TRUE(WaitUntil([&] { return Shares() && Preview().Position() > 0.7; }));
    }
    /// Lets them play to the end, which is one for both.
    void PlayOut(const std::function<void()>& watch) {
        EXPECT_TRUE(WaitUntil([&] {
            watch();
            if (const double distance = Distance(); !Stage().AtEnd()) {
                EXPECT_NEAR(distance, 0.0, 0.02);
            }
            return Preview().AtEnd();
        }));
        EXPECT_TRUE(Stage().AtEnd() && Shares());
        EXPECT_EQ(Preview().Position(), Preview().Duration());
    }
};

TEST_F(SharedDecoding, PauseSeekRateAndTheNextFileGoOnAsWithTwoDecoders) {
    PlayShared("clip.mp4");
    OrderTwins({.running = false, .seekTo = {}});
    EXPECT_TRUE(Shows(Preview(), Preview().Position()));
    OrderTwins({.running = true, .seekTo = 1.0, .rate = 1.25});
    EXPECT_TRUE(Reaches(Preview(), 2.5));
    EXPECT_NEAR(Distance(), 0.0, 0.01);
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
    EXPECT_TRUE(Shares());

    Preview().Release();
    Stage().Release();
    PlayTwins(ClipPath("short.mp4"));
    EXPECT_TRUE(Preview().Frames()->HasPicture());
    EXPECT_TRUE(Shows(Preview(), 1.0));
    PlayOut([] {});
    OrderTwins({.running = true, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Preview(), 0.5));
}

TEST_F(SharedDecoding, AFarSmallerPreviewGetsThePicturesInItsOwnSize) {
    Stage().Frames()->SetSize(1280, 960);
    PlayTwins(ClipPath("clip.mp4"));
    EXPECT_TRUE(WaitUntil([&] { return Width() == 320 && *Grey(Preview()) > GreyAt(0.5); }));
    OrderTwins({.running = false, .seekTo = {}});
    Preview().Frames()->SetSize(640, 480); // halted: until the next picture there is only the whole one
    EXPECT_EQ(Width(), 1280);
    Preview().Frames()->SetSize(300, 200);
    OrderTwins({.running = false, .seekTo = 3.0});
    EXPECT_TRUE(Shows(Preview(), 3.0) && Width() == 300 && Preview().Position() == 3.0);
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
        Unload();
    }
    PlayShared("clip.mp4");
    OrderTwins({.running = false, .seekTo = 3.0});
    EXPECT_TRUE(Shows(Preview(), 3.0));
    ASSERT_TRUE(Stage().Load(ClipPath("short.mp4")));
    Order(Stage(), {.running = false, .seekTo = 0.0});
    EXPECT_TRUE(Shows(Stage(), 0.0));
    EXPECT_TRUE(WaitUntil([&] { return !Shares(); }));
    EXPECT_TRUE(Shows(Preview(), 3.0));
    Unload();

    PlayShared("clip.mp4");
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
    EXPECT_NEAR(*Grey(Preview()), GreyAt(before), 10.0) << "no jump";
    EXPECT_TRUE(Reaches(Preview(), 3.0));
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Preview().Position()), 8.0);
}

TEST_F(SharedDecoding, TheDistanceThatOrdersGiveStays) {
    ASSERT_TRUE(LoadTwins(ClipPath("clip.mp4")));
    struct Case {
        double preview, stage, rate, within;
    };
    for (const Case& c :
         {Case{0.3, 0.33, 1.0, 0.002}, Case{0.2, 0.0, 1.0, 0.06}, Case{0.0, 0.12, 1.25, 0.06}}) {
        const auto send = [&](bool running, double by) {
            const EngineOrder orders[] = {
                {&Preview(), {.running = running, .seekTo = c.preview + by, .rate = c.rate}},
                {&Stage(), {.running = running, .seekTo = c.stage + by, .rate = c.rate}}};
            Media().Apply(orders);
            return Preview().Position() == c.preview + by && Stage().Position() == c.stage + by;
        };
        EXPECT_TRUE(send(false, 0.0));
        EXPECT_TRUE(send(true, 1.0));
        ASSERT_TRUE(Reaches(Stage(), 2.0));
        EXPECT_NEAR(Distance(), c.stage - c.preview, c.within);
    }
}

/// Seeks that take longer than anybody waits for.
class LateSeeks : public SharedDecoding {
protected:
    LateSeeks() : SharedDecoding({.seekLimit = std::chrono::milliseconds(1)}) {}
};

TEST_F(LateSeeks, NeitherPartTheTwinsNorBringTheEndEarly) {
    ASSERT_TRUE(LoadTwins(ClipPath("far.mp4")));
    OrderTwins({.running = true, .seekTo = 4.6});
    bool there = false;
    PlayOut([&] {
        const double position = Preview().Position();
        there = there || *Grey(Stage()) > GreyAt(4.5);
        EXPECT_TRUE(there || position < 4.7) << position << " is ahead of what the audience sees";
    });
    EXPECT_NEAR(*Grey(Stage()), GreyAt(4.96), 5.0) << "it has seen all";
    OrderTwins({.running = true, .seekTo = 4.0});
    OrderTwins({.running = true, .seekTo = 0.5}); // before it is there
    EXPECT_TRUE(Reaches(Preview(), 0.7));
    EXPECT_LT(Preview().Position(), 2.0);
}

/// Seeks that nobody ceases to wait for.
class PatientStarts : public SharedDecoding {
protected:
    PatientStarts() : SharedDecoding({.audioOutput = "null", .seekLimit = std::chrono::seconds(8)}) {}
};

TEST_F(PatientStarts, TwinsThatStartInOneHandlerStartTogether) {
    ASSERT_TRUE(LoadTwins(ClipPath("far.mp4")) && Preview().Load(ClipPath("clip.mp4")));
    OrderTwins({.running = true, .seekTo = 4.5}); // which takes the stage most of a second
    EXPECT_TRUE(WaitUntil([&] {
        EXPECT_NEAR(Distance(), 0.0, 0.1);
        return Stage().Position() > 4.7;
    }));
}

/// An output that takes no more, as a device that hangs, until somebody reads.
struct OutputPipe {
    OutputPipe() {
        const std::string path = folder.Path("out.stage.wav");
        mkfifo(path.c_str(), 0600);
        end = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~OutputPipe() { close(end); }
    void Read() const {
        std::array<char, 65536> bytes{};
        while (read(end, bytes.data(), bytes.size()) > 0)
            ;
    }
    TemporaryFolder folder;
    int end = -1;
};

class StalledOutput : protected OutputPipe, public SharedDecoding {
protected:
    StalledOutput() : SharedDecoding({.audioOutput = "pcm", .audioFileBase = folder.Path("out")}) {}
    ~StalledOutput() override { EndPlayers(); }
};

TEST_F(StalledOutput, HoldsThePositionAndBringsNoEnd) {
    PlayTwins(ClipPath("short.mp4"));
    EXPECT_FALSE(WaitUntil([&] { return Preview().Position() > 2.0 || Stage().Position() > 2.0; }, 4.0));
    PlayOut([&] { Read(); });
    EXPECT_NEAR(*Grey(Stage()), GreyAt(2.96), 5.0);
}

} // namespace kirolane::tests
