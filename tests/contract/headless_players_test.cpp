// The players on the scripted engine.

#include "backends/headless/headless.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {

class HeadlessHarness : public PlayerHarness {
public:
    /// `missing`: seconds by which the data of the movies falls short of their lengths.
    explicit HeadlessHarness(headless::ScriptedMovie traits, double missing = 0.0) {
        traits.length = kLength;
        traits.dataEnd = kLength - missing;
        m_headless.media.Script("clip.mov", traits);
        traits.length = kOtherLength;
        traits.dataEnd = kOtherLength - missing;
        m_headless.media.Script("other.mov", traits);
    }

    MediaEngine& Media() override { return m_headless.media; }
    WindowSystem& Windows() override { return m_headless.windows; }
    [[nodiscard]] std::string Clip() const override { return "/clips/clip.mov"; }
    [[nodiscard]] double LengthSeconds() const override { return kLength; }
    [[nodiscard]] std::string OtherClip() const override { return "/clips/other.mov"; }
    [[nodiscard]] double OtherLengthSeconds() const override { return kOtherLength; }

    bool WaitUntil(const std::function<bool()>& condition) override {
        for (int steps = 0; steps < 2000; ++steps) {
            if (condition())
                return true;
            m_headless.windows.Advance(10);
        }
        return false;
    }
    [[nodiscard]] double Now() const override { return static_cast<double>(m_headless.clock.Now()) / 1000; }
    [[nodiscard]] double Tolerance() const override { return 0.15; }
    [[nodiscard]] double LengthTolerance() const override { return 0.0; }

private:
    static constexpr double kLength = 6.0;
    static constexpr double kOtherLength = 4.0;

    headless::Headless m_headless;
};

std::unique_ptr<PlayerHarness> MakePrompt() {
    return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{});
}
std::unique_ptr<PlayerHarness> MakeSlow() {
    return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{.openDelay = 60, .seekDelay = 120});
}
/// The last frame lies before the end, as in nearly every real file.
std::unique_ptr<PlayerHarness> MakeShort() {
    return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{}, 0.04);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Headless, PlayerSuite, ::testing::Values(MakePrompt));
INSTANTIATE_TEST_SUITE_P(SlowHeadless, PlayerSuite, ::testing::Values(MakeSlow));
INSTANTIATE_TEST_SUITE_P(ShortHeadless, PlayerSuite, ::testing::Values(MakeShort));

} // namespace kirolane::tests
