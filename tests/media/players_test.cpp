#include "engine_test.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {

class MpvHarness : public PlayerHarness {
public:
    MpvHarness() : PlayerHarness({{ClipPath("clip.mp4"), 5.0}, {ClipPath("short.mp4"), 3.0}, 0.25, 0.1}) {}

    MediaEngine& Media() override { return m_media; }
    bool WaitUntil(const std::function<bool()>& condition) override {
        return windows.RunUntil(condition, std::chrono::seconds(20));
    }
    [[nodiscard]] double Now() const override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

private:
    mpv::MpvMedia m_media{{.roles = {{"Console.A", mpv::Role::Stage, "Main"}}}};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values([]() -> std::unique_ptr<PlayerHarness> {
                             return std::make_unique<MpvHarness>();
                         }));

} // namespace kirolane::tests
