#include "backends/headless/headless_media.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace kirolane::headless {

void HeadlessMedia::SetDrift(const std::string& player, ScriptedDrift drift) {
    if (const auto it = m_players.find(player); it != m_players.end())
        it->second->Settle();
    m_drifts[player] = drift;
}

std::vector<HeadlessMedia::Order> HeadlessMedia::OrdersOf(std::string_view player) const {
    std::vector<Order> orders;
    std::copy_if(m_orders.begin(), m_orders.end(), std::back_inserter(orders),
                 [&](const Order& order) { return order.player == player; });
    return orders;
}

const ScriptedEngine* HeadlessMedia::Player(std::string_view path) const {
    const auto it = m_players.find(path);
    return it == m_players.end() ? nullptr : it->second;
}

std::unique_ptr<PlayerEngine> HeadlessMedia::MakePlayer(std::string_view path) {
    return std::make_unique<ScriptedEngine>(*this, std::string(path));
}

void HeadlessMedia::Apply(std::span<const EngineOrder> orders) {
    m_openTime = 0; // the handler is over
    ++m_batch;
    for (const EngineOrder& order : orders) {
        const auto it = std::find_if(m_players.begin(), m_players.end(),
                                     [&](const auto& player) { return player.second == order.engine; });
        if (it == m_players.end())
            continue;
        m_orders.push_back({it->first, order.order, m_clock.Now(), m_batch});
        it->second->Apply(order.order);
    }
}

ScriptedEngine::ScriptedEngine(HeadlessMedia& media, std::string path)
    : m_media(media), m_path(std::move(path)) {
    m_media.m_players[m_path] = this;
}

ScriptedEngine::~ScriptedEngine() {
    const auto it = m_media.m_players.find(m_path);
    if (it != m_media.m_players.end() && it->second == this)
        m_media.m_players.erase(it);
}

bool ScriptedEngine::Load(const std::string& nativePath) {
    m_media.m_loads[m_path].push_back(nativePath);
    m_movie.reset();
    Halt(0.0);

    auto script = m_media.m_movies.find(nativePath);
    if (script == m_media.m_movies.end())
        script = m_media.m_movies.find(std::filesystem::path(nativePath).filename().native());
    const bool scripted = script != m_media.m_movies.end();
    const ScriptedMovie movie = scripted ? script->second : m_media.m_default;

    const std::int64_t left = HeadlessMedia::kOpenLimit - m_media.m_openTime;
    const std::int64_t wait = std::min(movie.openDelay, left);
    m_media.m_clock.Leap(wait);
    m_media.m_openTime += wait;
    std::error_code error;
    if (!movie.opens || movie.openDelay > left ||
        (!scripted && !std::filesystem::is_regular_file(nativePath, error)))
        return false;
    m_movie = movie;
    return true;
}

double ScriptedEngine::DataEnd() const {
    return m_movie ? std::min(m_movie->dataEnd.value_or(m_movie->length), m_movie->length) : 0.0;
}

ScriptedDrift ScriptedEngine::Drift() const {
    const auto it = m_media.m_drifts.find(m_path);
    return it == m_media.m_drifts.end() ? ScriptedDrift{} : it->second;
}

double ScriptedEngine::PositionAt(std::int64_t time) const {
    if (!m_running)
        return m_from;
    const double ran = static_cast<double>(std::max<std::int64_t>(time - m_since, 0)) / 1000;
    // A seek past the end of the data stays where it went.
    return std::max(m_from, std::min(m_from + ran * m_rate * Drift().rate, DataEnd()));
}

double ScriptedEngine::PositionAsOf(Instant at) const {
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(at.time_since_epoch()).count();
    return AtEndAt(time) ? Duration() : PositionAt(time);
}

bool ScriptedEngine::AtEndAt(std::int64_t time) const {
    return m_movie.has_value() && time >= m_since && PositionAt(time) >= DataEnd();
}

void ScriptedEngine::Halt(double position) {
    m_running = false;
    m_from = position;
    m_since = m_media.m_clock.Now();
}

void ScriptedEngine::Settle() {
    m_from = Position();
    m_since = std::max(m_since, m_media.m_clock.Now()); // a start that is still to come stays ahead
}

void ScriptedEngine::Apply(const PlayerOrder& order) {
    const std::int64_t now = m_media.m_clock.Now();
    const bool starts = order.running && (!m_running || order.seekTo);
    Settle();
    m_rate = order.rate;
    m_volume = order.volume;
    if (order.unload) {
        m_movie.reset();
        Halt(0.0);
        return;
    }
    m_running = order.running && m_movie.has_value();
    if (order.seekTo)
        m_from = *order.seekTo;
    if (starts)
        m_since = now + Drift().startLag;
    if (order.seekTo && m_movie)
        m_since = std::max(m_since, now + m_movie->seekDelay);
}

} // namespace kirolane::headless
