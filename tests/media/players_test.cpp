// The players on libmpv.

#include "engine_test.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {

class MpvHarness : public PlayerHarness {
public:
    MpvHarness() : PlayerHarness({ClipPath("clip.mp4"), 5.0, ClipPath("short.mp4"), 3.0, 0.25, 0.1}) {}

    MediaEngine& Media() override { return m_media; }
    WindowSystem& Windows() override { return m_windows; }
    bool WaitUntil(const std::function<bool()>& condition) override {
        return m_windows.WaitUntil(condition, std::chrono::seconds(20));
    }
    [[nodiscard]] double Now() const override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

private:
    headless::HandClock m_clock;
    LiveWindows m_windows{m_clock};
    mpv::MpvMedia m_media{{.roles = {{"PlayerForm.Main", mpv::Role::Stage, "Main"}}}};
};

std::unique_ptr<PlayerHarness> MakeMpv() {
    return std::make_unique<MpvHarness>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values(MakeMpv));

} // namespace kirolane::tests
