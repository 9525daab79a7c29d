#pragma once

#include "contract/backend/mediaengine.h"
#include "contract/backend/windowsystem.h"

#include <functional>
#include <memory>
#include <string>

namespace kirolane::tests {

/// What the player suite (player_suite.h) needs of a media engine. One harness serves one test: it is made
/// before the runtime and goes after it.
///
/// The suite makes a form "PlayerForm" with the player "PlayerForm.Main".
class PlayerHarness {
public:
    virtual ~PlayerHarness() = default;

    /// For the runtime. The windows need no peers.
    virtual MediaEngine& Media() = 0;
    virtual WindowSystem& Windows() = 0;

    /// Native path of a clip that plays, with sound and, if the engine has pictures, picture.
    [[nodiscard]] virtual std::string Clip() const = 0;
    /// Its length: a whole number of seconds from 4 to 8.
    [[nodiscard]] virtual double LengthSeconds() const = 0;
    /// Another clip that plays, at least 1 s shorter.
    [[nodiscard]] virtual std::string OtherClip() const = 0;
    [[nodiscard]] virtual double OtherLengthSeconds() const = 0;

    /// Lets time pass, with all that the runtime has to do, until the condition holds; it is asked at least
    /// every 20 ms of the time that players play in. False if it does not hold within 20 s of that time.
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;
    /// Seconds of the time that players play in, from anywhere.
    [[nodiscard]] virtual double Now() const = 0;
    /// Seconds by which a running player may lie off an ideal one; at most 0.3.
    [[nodiscard]] virtual double Tolerance() const = 0;
    /// Seconds by which a Duration may lie off the clip's length; at most 0.1.
    [[nodiscard]] virtual double LengthTolerance() const = 0;
};

/// The suite's parameter: INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values(MakeMpvHarness)).
using PlayerHarnessFactory = std::unique_ptr<PlayerHarness> (*)();

} // namespace kirolane::tests
