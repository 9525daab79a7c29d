#pragma once

#include "contract/backend/mediaengine.h"
#include "contract/backend/windowsystem.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace kirolane::tests {

/// What the player suite (player_suite.h) needs of a media engine. One harness serves one test: it is made
/// before the runtime and goes after it.
///
/// The suite makes a form "PlayerForm" with the player "PlayerForm.Main".
class PlayerHarness {
public:
    struct Facts {
        std::string clip;       ///< native path of one that plays, with sound and, if there are any, pictures
        double length;          ///< its seconds: a whole number from 4 to 8
        std::string otherClip;  ///< another one
        double otherLength;     ///< at least 1 s shorter
        double tolerance;       ///< seconds by which a running player may lie off an ideal one; at most 0.3
        double lengthTolerance; ///< seconds by which a Duration may lie off the length; at most 0.1
    };
    explicit PlayerHarness(Facts facts) : is(std::move(facts)) {}
    virtual ~PlayerHarness() = default;

    /// For the runtime. The windows need no peers.
    virtual MediaEngine& Media() = 0;
    virtual WindowSystem& Windows() = 0;

    /// Lets time pass, with all that the runtime has to do, until the condition holds; it is asked at least
    /// every 20 ms of the time that players play in. False if it does not hold within 20 s of that time.
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;
    /// Seconds of the time that players play in, from anywhere.
    [[nodiscard]] virtual double Now() const = 0;

    const Facts is;
};

/// The suite's parameter: INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values(MakeMpvHarness)).
using PlayerHarnessFactory = std::unique_ptr<PlayerHarness> (*)();

} // namespace kirolane::tests
