#include "backends/headless/headless.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {

class HeadlessHarness : public PlayerHarness {
public:
    /// `missing`: seconds by which the data of the movies falls short of their lengths.
    explicit HeadlessHarness(headless::ScriptedMovie traits, double missing = 0.0)
        : PlayerHarness({{"/clips/clip.mov", 6.0}, {"/clips/other.mov", 4.0}, 0.15, 0.0}) {
        for (const auto& [name, length] : {is.clip, is.other}) {
            traits.length = length;
            traits.dataEnd = length - missing;
            m_media.Script(name, traits);
        }
    }

    MediaEngine& Media() override { return m_media; }
    bool WaitUntil(const std::function<bool()>& condition) override {
        int steps = 0;
        for (; steps < 2000 && !condition(); ++steps)
            windows.Advance(10);
        return steps < 2000;
    }
    [[nodiscard]] double Now() const override { return static_cast<double>(clock.Now()) / 1000; }

private:
    headless::HeadlessMedia m_media{clock};
};

/// Answering at once, slowly, and with a last frame that lies before the end, as in nearly every real file.
using Made = std::unique_ptr<PlayerHarness>;
const PlayerHarnessFactory kHarnesses[] = {
    []() -> Made { return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{}); },
    []() -> Made {
        return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{.openDelay = 60, .seekDelay = 120});
    },
    []() -> Made { return std::make_unique<HeadlessHarness>(headless::ScriptedMovie{}, 0.04); },
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Headless, PlayerSuite, ::testing::ValuesIn(kHarnesses));

} // namespace kirolane::tests
