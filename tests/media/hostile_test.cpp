// An engine that does what it likes neither ends nor holds up nor fills the program that runs it.

#include "backends/remote/engine_link.h"
#include "backends/remote/remote_media.h"
#include "engine_test.h"
#include "support/captured_stderr.h"

#include <cstdlib>
#include <filesystem>

#include <malloc.h>

namespace kirolane::tests {

class HostileEngine : public ::testing::TestWithParam<const char*> {};

namespace {
auto OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}
} // namespace

TEST_P(HostileEngine, CostsItsFileAndNothingElse) {
    const std::string act = GetParam();
    ::setenv("KIROLANE_HOSTILE", act.c_str(), 1);
    CapturedStderr lines;
    const std::size_t memory = mallinfo2().uordblks;
    const auto descriptors = OpenDescriptors();
    const auto began = std::chrono::steady_clock::now();
    {
        remote::RemoteOptions options;
        options.roles = {{"stage", wire::Role::Stage, ""}};
        options.loadLimit = std::chrono::milliseconds(1500);
        options.program = KIROLANE_HOSTILE_ENGINE;
        remote::RemoteMedia media(options);
        const auto player = media.MakePlayer("stage");
        player->Frames()->SetSize(640, 360);
        const bool loaded = player->Load(ClipPath("clip.mp4"));
        EXPECT_EQ(loaded, act == "nonsense in memory");
        const EngineOrder orders[] = {{player.get(), {.running = loaded, .seekTo = {}}}};
        media.Apply(orders);
        headless::HandClock clock;
        headless::HeadlessWindows windows(clock);
        const auto look = [&] {
            const double position = player->Position();
            EXPECT_TRUE(position >= 0.0 && position <= 5.0) << position;
            player->Frames()->Visit([](const FrameView& view) {
                EXPECT_TRUE(view.width == 640 && view.height == 360 && view.pixels[0] + 1 > 0);
            });
            return false;
        };
        windows.RunUntil(look, std::chrono::milliseconds(500));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(4));
    EXPECT_LT(mallinfo2().uordblks, memory + 5'000'000);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_LE(lines.Lines().size(), 40U);
}

TEST(EngineLinkTest, AnEngineThatIsStillStartingIsNotAskedYet) {
    using namespace std::chrono_literals;
    const remote::TimePoint start{};
    auto [ours, theirs] = wire::Channel::MakePair();
    remote::EngineLink link({}, wire::Channel(std::move(ours)), start);
    EXPECT_FALSE(link.Hangs(true, start + 5s) || link.Hangs(true, start + 14s)) << "a file may wait for it";
    link.TakeReady(start + 14s);
    EXPECT_FALSE(link.Hangs(true, start + 15s)) << "it is asked";
    EXPECT_TRUE(link.Hangs(true, start + 17s));
}

INSTANTIATE_TEST_SUITE_P(Acts, HostileEngine,
                         ::testing::Values("exits", "ready twice", "loads unasked", "dies", "hangs",
                                           "no number", "endless", "stranger", "unknown", "short", "empty",
                                           "two boxes", "changes", "lines", "descriptors", "pairs",
                                           "nonsense in memory"));

} // namespace kirolane::tests
