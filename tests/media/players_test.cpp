#include "backends/remote/remote_media.h"
#include "engine_test.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {

const mpv::MpvOptions kOptions{.roles = {{"Console.A", mpv::Role::Stage, "Main"}}};

template <class Engine, class Options> class MpvHarness : public PlayerHarness {
public:
    explicit MpvHarness(Options options)
        : PlayerHarness({{ClipPath("clip.mp4"), 5.0}, {ClipPath("short.mp4"), 3.0}, 0.25, 0.1}),
          m_media(options) {}

    MediaEngine& Media() override { return m_media; }
    bool WaitUntil(const std::function<bool()>& condition) override {
        return windows.RunUntil(condition, std::chrono::seconds(20));
    }
    [[nodiscard]] double Now() const override {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }

private:
    Engine m_media;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values([]() -> std::unique_ptr<PlayerHarness> {
                             return std::make_unique<MpvHarness<mpv::MpvMedia, mpv::MpvOptions>>(kOptions);
                         }));
INSTANTIATE_TEST_SUITE_P(Remote, PlayerSuite, ::testing::Values([]() -> std::unique_ptr<PlayerHarness> {
                             return std::make_unique<MpvHarness<remote::RemoteMedia, remote::RemoteOptions>>(
                                 remote::RemoteOptions{kOptions, KIROLANE_ENGINE});
                         }));

} // namespace kirolane::tests
