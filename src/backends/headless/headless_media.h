#pragma once

#include "backends/headless/handclock.h"
#include "contract/backend/mediaengine.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane::headless {

/// How a file behaves that a test names.
struct ScriptedMovie {
    double length = 10.0; ///< seconds: the Duration
    bool opens = true;
    std::int64_t openDelay = 0;      ///< milliseconds that a Load lets pass; all loads of a handler have 5 s
    std::int64_t seekDelay = 0;      ///< milliseconds from the order of a seek until it plays from there
    std::optional<double> dataEnd{}; ///< where the data runs out, if before length
};

/// How a player's clock runs against the hand clock.
struct ScriptedDrift {
    double rate = 1.0;         ///< seconds played a second at Rate 1
    std::int64_t startLag = 0; ///< milliseconds from the order until it runs, at each start
};

class ScriptedEngine;

/// Players of scripted movies, which advance with the hand clock. They have no pictures.
class HeadlessMedia : public MediaEngine {
public:
    explicit HeadlessMedia(HandClock& clock) : m_clock(clock) {}

    /// Files of that name, or that one file if it is an absolute path, behave so. Files without a script play
    /// as a movie of the default length if they exist.
    void Script(std::string nameOrPath, ScriptedMovie movie) { m_movies[std::move(nameOrPath)] = movie; }
    void SetDefaultMovie(ScriptedMovie movie) { m_default = movie; }
    /// For the player of that path ("MonitorForm.QTM"), at any time.
    void SetDrift(const std::string& player, ScriptedDrift drift);

    /// One order, as a player's engine got it.
    struct Order {
        std::string player;
        PlayerOrder order;
        std::int64_t time = 0; ///< of the hand clock
        int batch = 0;         ///< orders given in one call share a number
    };
    [[nodiscard]] const std::vector<Order>& Orders() const { return m_orders; }
    [[nodiscard]] std::vector<Order> OrdersOf(std::string_view player) const;
    void ForgetOrders() { m_orders.clear(); }
    /// The paths that a player was told to load, in order, opened or not.
    [[nodiscard]] const std::vector<std::string>& Loads(const std::string& player) { return m_loads[player]; }

    /// What a player does now; null where there is none of that path.
    [[nodiscard]] const ScriptedEngine* Player(std::string_view path) const;

    // MediaEngine.
    std::unique_ptr<PlayerEngine> MakePlayer(std::string_view path) override;
    [[nodiscard]] Instant Now() const override { return Instant(std::chrono::milliseconds(m_clock.Now())); }
    void Apply(std::span<const EngineOrder> orders) override;

private:
    friend class ScriptedEngine;

    static constexpr std::int64_t kOpenLimit = 5000;

    HandClock& m_clock;
    std::map<std::string, ScriptedMovie, std::less<>> m_movies;
    ScriptedMovie m_default;
    std::map<std::string, ScriptedDrift, std::less<>> m_drifts;
    std::map<std::string, ScriptedEngine*, std::less<>> m_players;
    std::map<std::string, std::vector<std::string>, std::less<>> m_loads;
    std::vector<Order> m_orders;
    int m_batch = 0;
    std::int64_t m_openTime = 0; ///< spent on the loads of the running handler
};

/// One player of HeadlessMedia.
class ScriptedEngine : public PlayerEngine {
public:
    ScriptedEngine(HeadlessMedia& media, std::string path);
    ~ScriptedEngine() override;
    ScriptedEngine(const ScriptedEngine&) = delete;
    ScriptedEngine& operator=(const ScriptedEngine&) = delete;

    [[nodiscard]] bool Loaded() const { return m_movie.has_value(); }
    [[nodiscard]] bool Running() const { return m_running; }
    [[nodiscard]] double Rate() const { return m_rate; }
    [[nodiscard]] std::int32_t Volume() const { return m_volume; }

    void Apply(const PlayerOrder& order);
    /// Counts anew from here, so that what changes now has no effect on what has been played.
    void Settle();

    // PlayerEngine.
    bool Load(const std::string& nativePath) override;
    [[nodiscard]] double Duration() const override { return m_movie ? m_movie->length : 0.0; }
    [[nodiscard]] double Position() const override { return PositionAt(m_media.m_clock.Now()); }
    [[nodiscard]] double PositionAsOf(Instant at) const override;
    [[nodiscard]] bool AtEnd() const override { return AtEndAt(m_media.m_clock.Now()); }
    [[nodiscard]] FrameSource* Frames() override { return nullptr; }

private:
    [[nodiscard]] double PositionAt(std::int64_t time) const;
    [[nodiscard]] bool AtEndAt(std::int64_t time) const;
    [[nodiscard]] double DataEnd() const;
    [[nodiscard]] ScriptedDrift Drift() const;
    void Halt(double position);

    HeadlessMedia& m_media;
    std::string m_path;
    std::optional<ScriptedMovie> m_movie;
    bool m_running = false;
    double m_rate = 1.0;
    std::int32_t m_volume = 256;
    double m_from = 0.0;      ///< seconds: where it stood at m_since
    std::int64_t m_since = 0; ///< from when on it runs; may lie ahead
};

} // namespace kirolane::headless
