#pragma once

#include "backends/headless/headless.h"
#include "backends/mpv/mpv_media.h"
#include "contract/backend/mediaengine.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// Path and bytes of one of the clips that make_clips.sh makes.
std::string ClipPath(const std::string& name);
std::string Content(const std::string& clip);

double SecondsOf(const std::function<void()>& work);

/// A figure of /proc/self/status, 0 where there is none.
long Status(const std::string& name);

/// Headless windows whose time is the real one: a wake comes through to whoever waits.
class LiveWindows : public headless::HeadlessWindows {
public:
    using HeadlessWindows::HeadlessWindows;

    void Wake() override;
    /// Runs what is posted, as it comes, until the condition holds; asked every few milliseconds. False after
    /// the limit.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);

private:
    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_woken = false;
};

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

    /// The file in both twins.
    bool LoadTwins(const std::string& path) { return Preview().Load(path) && Stage().Load(path); }
    /// Orders one player, or several at once.
    void Order(PlayerEngine& engine, const PlayerOrder& order);
    void OrderTwins(const PlayerOrder& order);
    /// Releases and empties all players.
    void Unload();
    void PlayTwins(const std::string& path, double from = 0.0) {
        ASSERT_TRUE(LoadTwins(path)) << path;
        OrderTwins({.running = true, .seekTo = from});
    }
    double Distance() { return Stage().Position() - Preview().Position(); }

    /// Lets the players play until the condition holds, at most so many seconds.
    bool WaitUntil(const std::function<bool()>& condition, double seconds = 8.0);
    bool Reaches(PlayerEngine& engine, double position) {
        return WaitUntil([&] { return engine.Position() > position; });
    }
    /// The grey level of the middle of the newest picture, 0 to 255; nothing if there is none.
    static std::optional<int> Grey(PlayerEngine& engine);
    /// That level in the clips of make_clips.sh, so many seconds from the start.
    static double GreyAt(double seconds) { return (20.0 + 40.0 * seconds - 16.0) * 255.0 / 219.0; }
    bool Shows(PlayerEngine& engine, double seconds) {
        return WaitUntil([&] { return std::abs(Grey(engine).value_or(-9) - GreyAt(seconds)) < 5.0; }, 3.0);
    }

private:
    headless::HandClock m_clock;
    LiveWindows m_windows{m_clock};
    std::unique_ptr<mpv::MpvMedia> m_media;
    std::unique_ptr<PlayerEngine> m_preview;
    std::unique_ptr<PlayerEngine> m_stage;
    std::unique_ptr<PlayerEngine> m_sound;
};

} // namespace kirolane::tests
