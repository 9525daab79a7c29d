#pragma once

#include "backends/mpv/mpv_media.h"
#include "contract/backend/mediaengine.h"
#include "mpv_harness.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// The engines of libmpv by themselves, without the contract's players above them: the twins and the sound's.
class EngineTest : public ::testing::Test {
protected:
    /// What is not given is as the program has it, but for the roles, which belong to the paths used here,
    /// and the device, so that it is no matter whether the machine has one.
    explicit EngineTest(mpv::MpvOptions options = {.audioOutput = "null"});
    ~EngineTest() override;

    PlayerEngine& Preview() { return *m_preview; }
    PlayerEngine& Stage() { return *m_stage; }
    PlayerEngine& Sound() { return *m_sound; }
    MediaEngine& Media() { return *m_media; }
    /// Ends the players, and with them what they write.
    void EndPlayers();

    /// Orders one player, or several at once.
    void Order(PlayerEngine& engine, const PlayerOrder& order);
    void OrderTwins(const PlayerOrder& order);
    void Unload(std::initializer_list<PlayerEngine*> engines);

    /// Lets the players play until the condition holds, at most so many seconds.
    bool WaitUntil(const std::function<bool()>& condition, double seconds = 8.0);
    /// The grey level of the middle of the newest picture, 0 to 255; nothing if there is none.
    static std::optional<int> Grey(PlayerEngine& engine);
    /// That level in the clips of make_clips.sh, so many seconds from the start.
    static double GreyAt(double seconds) { return (20.0 + 40.0 * seconds - 16.0) * 255.0 / 219.0; }

private:
    headless::HandClock m_clock;
    LiveWindows m_windows{m_clock};
    std::unique_ptr<mpv::MpvMedia> m_media;
    std::unique_ptr<PlayerEngine> m_preview;
    std::unique_ptr<PlayerEngine> m_stage;
    std::unique_ptr<PlayerEngine> m_sound;
};

} // namespace kirolane::tests
