#include "contract/movieplayer.h"

#include "contract/core/runtime.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kirolane {

MoviePlayer::MoviePlayer(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_engine(Runtime::Current().Media().MakePlayer(Path())) {}

MoviePlayer::~MoviePlayer() {
    if (Runtime::Exists())
        Runtime::Current().Orders().Forget(*this);
}

void MoviePlayer::SetMovie(const Ref<class Movie>& movie) {
    m_running = false;
    m_position = 0.0;
    m_lastRead = 0.0;
    m_seekTo.reset();
    m_movie = movie;
    if (movie.IsNil()) {
        if (m_engine != nullptr)
            m_engine->Release();
    } else {
        m_loaded = m_engine->Load(movie->NativePath());
        Runtime::Current().LetTimePass();
        if (!m_loaded)
            m_movie = nullptr;
    }
    Order();
    Changed();
}

void MoviePlayer::Play() {
    if (m_movie.IsNil() || m_running)
        return;
    m_running = true;
    m_lastRead = m_position;
    Order();
    if (OnPlay)
        OnPlay();
}

void MoviePlayer::Stop() {
    if (m_movie.IsNil() || !m_running)
        return;
    m_position = Position();
    m_running = false;
    Order();
    if (OnStop)
        OnStop();
}

double MoviePlayer::Position() const {
    if (m_movie.IsNil())
        return 0.0;
    if (!m_running || m_seekTo.has_value())
        return m_position;
    if (const Instant at = Runtime::Current().ReadingTime(); at != m_readAsOf) {
        m_readAsOf = at;
        m_lastRead = std::clamp(m_engine->PositionAsOf(at), m_lastRead, Duration());
    }
    return m_lastRead;
}

void MoviePlayer::SetPosition(double seconds) {
    if (m_movie.IsNil())
        return;
    m_position = std::isnan(seconds) ? 0.0 : std::clamp(seconds, 0.0, Duration());
    m_lastRead = m_position;
    m_seekTo = m_position;
    Order();
}

double MoviePlayer::Duration() const {
    return m_movie.IsNil() ? 0.0 : m_engine->Duration();
}

void MoviePlayer::SetVolume(std::int32_t volume) {
    m_volume = std::clamp(volume, 0, kFullVolume);
    Order();
}

void MoviePlayer::SetRate(double rate) {
    if (!(rate > 0.0) || !std::isfinite(rate))
        return;
    m_rate = rate;
    Order();
}

PlayerOrder MoviePlayer::TakeOrder() {
    m_ordered = false;
    PlayerOrder order;
    order.unload = m_movie.IsNil() && m_loaded;
    order.running = m_running;
    order.seekTo = std::exchange(m_seekTo, std::nullopt);
    order.rate = m_rate;
    order.volume = m_volume;
    m_loaded = m_loaded && !order.unload;
    return order;
}

void MoviePlayer::Order() {
    if (m_ordered)
        return;
    m_ordered = true;
    Runtime::Current().Orders().Mark(*this);
}

} // namespace kirolane
