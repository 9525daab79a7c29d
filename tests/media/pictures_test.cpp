#include "backends/mpv/picture_path.h"
#include "backends/mpv/scale_down.h"
#include "engine_test.h"
#include "gates.h"

#include <array>
#include <thread>

namespace kirolane::tests {

class Pictures : public EngineTest {
protected:
    ~Pictures() override { pictureGate.Open(); }
    bool BothHaveFrames() {
        return WaitUntil([&] { return Preview().Frames()->HasFrame() && Stage().Frames()->HasFrame(); });
    }
};

TEST_F(Pictures, AreStretchedToTheSizeAskedForAlsoWhileHaltedAndTheListenerIsTold) {
    Stage().Frames()->SetSize(640, 300);
    Preview().Frames()->SetSize(0, 0);
    ASSERT_TRUE(LoadTwins(ClipPath("clip.mp4")) && BothHaveFrames());
    EXPECT_EQ(Seen(Stage()).width, 640);
    std::atomic<int> told = 0;
    Stage().Frames()->SetListener([&] { ++told; });
    Stage().Frames()->SetSize(301, 77);
    EXPECT_TRUE(WaitUntil([&] { return Seen(Stage()).width == 301 && Seen(Stage()).height == 77; }));
    Stage().Frames()->Visit([](const FrameView& view) { // no edges left black, to the last corner
        EXPECT_NEAR(GreenAt(view, 300 / 301.0, 76 / 77.0), GreyAt(0.0), 5.0);
    });
    const int resized = told;
    OrderTwins({.running = false, .seekTo = 4.0});
    EXPECT_TRUE(Shows(Stage(), 4.0));
    EXPECT_GT(told, resized);
    Stage().Frames()->SetListener({});
}

TEST_F(Pictures, FromOneFileToTheNextTheOldOneStaysUntilTheNewIsThere) {
    PlayTwins(ClipPath("clip.mp4"), 3.0);
    ASSERT_TRUE(WaitUntil([&] { return Grey(Stage()) > GreyAt(2.9) && Grey(Preview()) > GreyAt(2.9); }));
    pictureGate.Close(); // one of the first is under way while the second is opened
    ASSERT_TRUE(pictureGate.Holds(1));
    std::atomic<int> pictures = 0;
    for (PlayerEngine* engine : {&Preview(), &Stage()})
        engine->Frames()->SetListener([&pictures, engine] {
            const bool current = engine->Frames()->HasFrame(); // first: it may come true in between
            const int grey = Grey(*engine);
            EXPECT_TRUE((!current && grey > GreyAt(2.9)) || std::abs(grey - GreyAt(0.0)) < 5.0)
                << grey << (current ? ": the file before, as the new one" : ": black, or the file before");
            ++pictures;
        });
    Preview().Release();
    Stage().Release();
    const bool taken = Preview().Load(ClipPath("short.mp4"));
    pictureGate.Open();
    ASSERT_TRUE(taken && Stage().Load(ClipPath("short.mp4")));
    OrderTwins({.running = false, .seekTo = 0.0});
    ASSERT_TRUE(BothHaveFrames());
    EXPECT_TRUE(Shows(Stage(), 0.0) && Shows(Preview(), 0.0));
    for (PlayerEngine* engine : {&Preview(), &Stage()})
        engine->Frames()->SetListener({});
    EXPECT_GT(pictures, 0);
}

TEST_F(Pictures, OneThatIsBeingPaintedStaysAsItIsAndTheNextOnesDoNotWait) {
    std::atomic<int> told = 0;
    Stage().Frames()->SetListener([&] { ++told; });
    PlayTwins(ClipPath("clip.mp4"));
    ASSERT_TRUE(WaitUntil([&] { return told > 3; }));
    Stage().Frames()->Visit([&](const FrameView& view) {
        const int before = told;
        const int grey = view.pixels[1];
        EXPECT_TRUE(WaitUntil([&] { return told > before + 10; }));
        EXPECT_EQ(view.pixels[1], grey);
    });
    Stage().Frames()->SetListener({});
}

TEST_F(Pictures, ALoadOfOneTwinLeavesTheOtherAloneAndAnEmptiedOneHasNone) {
    const auto stageHasNone = [&] {
        return !Stage().Frames()->HasFrame() && !Stage().Frames()->HasPicture();
    };
    PlayTwins(ClipPath("clip.mp4"));
    ASSERT_TRUE(Reaches(Stage(), 0.2));
    ASSERT_TRUE(Preview().Load(ClipPath("short.mp4")));
    Order(Preview(), {.running = false, .seekTo = {}});
    EXPECT_NEAR(Stage().Duration(), 5.0, 0.1);
    EXPECT_TRUE(Reaches(Stage(), Stage().Position() + 0.2));
    EXPECT_TRUE(Stage().Frames()->HasFrame() && Stage().Frames()->HasPicture());
    std::atomic<bool> told = false;
    Stage().Frames()->SetListener([&] { told = told || !Stage().Frames()->HasFrame(); });
    Unload();
    EXPECT_TRUE(stageHasNone());
    EXPECT_TRUE(WaitUntil([&] { return told.load(); })) << "it is told that there is none any more";
    Stage().Frames()->SetListener({});

    // One that was empty and is opened ahead, unasked, is empty again afterwards.
    ASSERT_TRUE(Preview().Load(ClipPath("clip.mp4")));
    Order(Preview(), {.running = false, .seekTo = {}});
    EXPECT_EQ(Stage().Duration(), 0.0);
    EXPECT_TRUE(stageHasNone());
    Order(Preview(), {.running = true, .seekTo = 2.0});
    EXPECT_TRUE(WaitUntil([&] { return Grey(Preview()) > GreyAt(2.1); })) << "alone it decodes for itself";
}

TEST_F(Pictures, HoldUpNoPositionWhereTheyAreInterlacedFromTheMiddleOnOrSecondsApart) {
    PlayTwins(ClipPath("mixed.mkv"));
    ASSERT_TRUE(Reaches(Stage(), 0.2));
    OrderTwins({.running = true, .seekTo = 2.5});
    EXPECT_TRUE(Reaches(Stage(), 2.7));
    PlayTwins(ClipPath("sparse.mp4")); // a picture every two seconds
    for (double next = 0.3; next < 1.5; next += 0.25)
        ASSERT_TRUE(WaitUntil([&] { return Stage().Position() > next; }, next < 0.5 ? 8.0 : 0.5)) << next;
}

TEST(PicturePath, ALeaderStillAtWorkAndAFollowerThatForgetsDoNotWaitForEachOther) {
    mpv::PicturePath follower(0, [] {});
    std::atomic<int> turns = 0;
    const std::jthread leader([&] {
        while (++turns < 200'000)
            follower.TakeLead({}, 1); // of a lead that is over
    });
    while (turns < 200'000)
        follower.Forget();
}

TEST(PicturePath, NoPictureOfALeadThatIsOverPassesForOneOfTheNext) {
    mpv::PicturePath leader(0, [] {});
    mpv::PicturePath follower(0, [] {});
    const unsigned first = leader.Lead(follower);
    EXPECT_TRUE(follower.TakeLead({}, first));
    EXPECT_TRUE(follower.HasFrame());
    follower.Expect(); // the next file; a worker is still about to hand on a picture of the first
    const unsigned second = leader.Lead(follower);
    EXPECT_FALSE(follower.TakeLead({}, first));
    EXPECT_FALSE(follower.HasFrame());
    EXPECT_TRUE(follower.TakeLead({}, second));
}

TEST(ScaleDown, MakesEachPixelTheMeanOfTheFourAboutItsMiddle) {
    std::array<std::uint32_t, 9 * 7> large{};
    for (std::uint32_t i = 0; i < large.size(); ++i)
        large[i] = i * 0x01010101;
    std::array<std::uint32_t, 4 * 3> small{};
    mpv::ScaleDown({reinterpret_cast<const std::uint8_t*>(large.data()), 9, 7, 9 * 4},
                   reinterpret_cast<std::uint8_t*>(small.data()), {nullptr, 4, 3, 4 * 4});
    for (std::uint32_t i = 0; i < small.size(); ++i)
        EXPECT_EQ(small[i], (4 + 2 * (i % 4) + 18 * (i / 4)) * 0x01010101) << i;
}

} // namespace kirolane::tests
