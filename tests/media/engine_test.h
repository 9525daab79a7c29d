#pragma once

#include "backends/mpv/mpv_media.h"
#include "support/contract_test.h"

#include <cmath>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// Path and bytes of one of the clips that make_clips.sh makes.
inline std::string ClipPath(const std::string& name) {
    return std::string(KIROLANE_CLIPS) + "/" + name;
}
inline std::string Content(const std::string& clip) {
    return ReadFile(ClipPath(clip));
}

/// Engines by themselves, without the contract's players above them: the twins and the sound's.
class EngineTest : public ::testing::Test {
protected:
    EngineTest() { MakePlayers(); }

    /// What is not given is as the program has it, but for the roles, which belong to the paths used here.
    template <class Media = mpv::MpvMedia, class Options = mpv::MpvOptions>
    void MakePlayers(Options options = {.audioOutput = "null"}) {
        EndPlayers();
        options.roles = {{"preview", mpv::Role::Preview, "Preview"},
                         {"stage", mpv::Role::Stage, "Stage"},
                         {"sound", mpv::Role::Sound, "Sound"}};
        m_media = std::make_unique<Media>(options);
        for (const mpv::PlayerRole& role : options.roles)
            m_players.push_back(m_media->MakePlayer(role.path));
    }
    /// Ends the players, and with them what they write.
    void EndPlayers() {
        m_players.clear();
        m_media.reset();
    }

    MediaEngine& Media() { return *m_media; }
    PlayerEngine& Preview() { return *m_players[0]; }
    PlayerEngine& Stage() { return *m_players[1]; }
    PlayerEngine& Sound() { return *m_players[2]; }

    bool LoadTwins(const std::string& path) { return Preview().Load(path) && Stage().Load(path); }
    void Order(std::initializer_list<EngineOrder> orders) { m_media->Apply(orders); }
    void Order(PlayerEngine& engine, const PlayerOrder& order) { Order({{&engine, order}}); }
    void OrderTwins(const PlayerOrder& order) { Order({{&Preview(), order}, {&Stage(), order}}); }
    void Unload() {
        const PlayerOrder order{.unload = true, .seekTo = {}};
        Order({{&Preview(), order}, {&Stage(), order}, {&Sound(), order}});
    }
    void PlayTwins(const std::string& path, double from = 0.0) {
        ASSERT_TRUE(LoadTwins(path)) << path;
        OrderTwins({.running = true, .seekTo = from});
    }
    double Distance() { return Stage().Position() - Preview().Position(); }

    /// Lets the players play until the condition holds, at most so many seconds.
    bool WaitUntil(const std::function<bool()>& condition, double seconds = 8.0) {
        return m_windows.RunUntil(condition, std::chrono::milliseconds(static_cast<int>(seconds * 1000)));
    }
    bool Reaches(PlayerEngine& engine, double position) {
        return WaitUntil([&] { return engine.Position() > position; });
    }
    /// The newest picture, whose pixels may have gone.
    static FrameView Seen(PlayerEngine& engine) {
        FrameView seen;
        engine.Frames()->Visit([&](const FrameView& view) { seen = view; });
        return seen;
    }
    /// The grey level of the middle of the newest picture, 0 to 255; -9 if there is none.
    static int Grey(PlayerEngine& engine) {
        int grey = -9;
        engine.Frames()->Visit([&](const FrameView& view) { grey = GreenAt(view, 0.5, 0.5); });
        return grey;
    }
    /// At a place given in parts of the width and the height.
    static int GreenAt(const FrameView& view, double x, double y) {
        return view.pixels[static_cast<std::ptrdiff_t>(view.height * y) * view.stride +
                           static_cast<std::ptrdiff_t>(view.width * x) * 4 + 1];
    }
    /// That level in the clips of make_clips.sh, so many seconds from the start.
    static double GreyAt(double seconds) { return (20.0 + 40.0 * seconds - 16.0) * 255.0 / 219.0; }
    bool Shows(PlayerEngine& engine, double seconds) {
        return WaitUntil([&] { return std::abs(Grey(engine) - GreyAt(seconds)) < 5.0; }, 3.0);
    }

private:
    headless::HandClock m_clock;
    headless::HeadlessWindows m_windows{m_clock};
    std::unique_ptr<MediaEngine> m_media;
    std::vector<std::unique_ptr<PlayerEngine>> m_players;
};

} // namespace kirolane::tests
