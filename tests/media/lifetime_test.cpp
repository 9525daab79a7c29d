// Many openings and many players leave nothing behind.

#include "engine_test.h"

#include <malloc.h>

namespace kirolane::tests {

namespace {

/// Bytes that the program holds, without what the allocator keeps.
std::size_t InUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace

class Lifetime : public EngineTest {
protected:
    void OpenAndClose(const std::string& clip) {
        PlayTwins(ClipPath(clip));
        ASSERT_TRUE(Reaches(Stage(), 0.0) && Reaches(Preview(), 0.0));
        Unload();
    }
};

TEST_F(Lifetime, SixtyOpeningsAreFlatInThreadsAndMemory) {
    long threads = 0;
    long memory = 0;
    std::size_t inUse = 0;
    for (int cycle = 1; cycle <= 60; ++cycle) {
        OpenAndClose(cycle % 2 == 0 ? "clip.mp4" : "clip.mpg");
        if (cycle == 20) {
            ASSERT_TRUE(WaitUntil([&] { return Status("Threads") < 20; }));
            threads = Status("Threads");
            memory = Status("VmRSS");
            inUse = InUse();
        }
    }
    EXPECT_GT(threads, 0);
    EXPECT_TRUE(WaitUntil([&] { return Status("Threads") <= threads; })) << Status("Threads");
    EXPECT_TRUE(WaitUntil([&] { return InUse() < inUse + 2'000'000; }))
        << InUse() << " bytes, from " << inUse;
    EXPECT_LT(Status("VmRSS") - memory, 16 * 1024) << "kilobytes, from " << memory;
}

TEST_F(Lifetime, PlayersThatGoWhilePlayingLeaveNoThread) {
    EndPlayers();
    ASSERT_TRUE(WaitUntil([] { return Status("Threads") <= 2; })) << Status("Threads");
    const long threads = Status("Threads");
    for (int round = 0; round < 5; ++round) {
        mpv::MpvMedia media(
            {.roles = {{"preview", mpv::Role::Preview, ""}, {"stage", mpv::Role::Stage, ""}}});
        const auto preview = media.MakePlayer("preview");
        const auto stage = media.MakePlayer("stage");
        stage->Frames()->SetListener([] {});
        ASSERT_TRUE(preview->Load(ClipPath("clip.mp4")) && stage->Load(ClipPath("clip.mp4")));
        const EngineOrder orders[] = {{preview.get(), {.running = true, .seekTo = 0.0}},
                                      {stage.get(), {.running = true, .seekTo = 0.0}}};
        media.Apply(orders);
        const bool runs = round % 2 == 0; // else they go while they start
        EXPECT_TRUE(WaitUntil([&] { return !runs || stage->Position() > 0.1; }));
    }
    EXPECT_TRUE(WaitUntil([&] { return Status("Threads") <= threads; })) << Status("Threads");
}

} // namespace kirolane::tests
