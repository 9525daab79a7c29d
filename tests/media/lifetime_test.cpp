#include "engine_test.h"

#include <malloc.h>

namespace kirolane::tests {

class Lifetime : public EngineTest {
protected:
    void OpenAndClose(int times) {
        for (int i = 0; i < times; ++i) {
            PlayTwins(ClipPath(i % 2 == 0 ? "clip.mp4" : "clip.mpg"));
            ASSERT_TRUE(Reaches(Stage(), 0.0) && Reaches(Preview(), 0.0));
            Unload();
        }
    }
    static auto Threads() {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
    }
    /// Bytes that it holds, without what the allocator keeps.
    static std::size_t InUse() {
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
    }
};

TEST_F(Lifetime, SixtyOpeningsAreFlatInMemory) {
    OpenAndClose(20);
    const std::size_t inUse = InUse();
    OpenAndClose(40);
    EXPECT_TRUE(WaitUntil([&] { return InUse() < inUse + 2'000'000; })) << InUse() << ", from " << inUse;
}

TEST_F(Lifetime, PlayersThatGoWhilePlayingLeaveNoThread) {
    EndPlayers();
    ASSERT_TRUE(WaitUntil([] { return Threads() <= 2; })) << Threads();
    const auto threads = Threads();
    for (int round = 0; round < 5; ++round) {
        MakePlayers();
        Stage().Frames()->SetListener([] {});
        PlayTwins(ClipPath("clip.mp4"));
        EXPECT_TRUE(round % 2 == 0 || Reaches(Stage(), 0.1)); // they go while they start, too
        EndPlayers();
    }
    EXPECT_TRUE(WaitUntil([&] { return Threads() <= threads; })) << Threads();
}

} // namespace kirolane::tests
