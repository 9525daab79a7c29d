#include "platform/mpv/play_clock.h"

#include <algorithm>
#include <cmath>

namespace kirolane::mpv {

namespace {
/// A report that lies further off is taken as it is.
constexpr double kLeap = 0.15;
/// The part of a report's difference that is taken over at once.
constexpr double kPull = 0.2;
} // namespace

double PlayClock::Raw(TimePoint now) const {
    if (!m_running)
        return m_base;
    return m_base + std::chrono::duration<double>(now - m_since).count() * m_rate;
}

double PlayClock::Read(TimePoint now) const {
    m_lastRead = std::max(m_lastRead, Raw(now));
    return m_lastRead;
}

void PlayClock::Set(double position) {
    m_running = false;
    m_base = position;
    m_lastRead = position;
}

void PlayClock::Start(TimePoint now) {
    m_since = now;
    m_running = true;
}

void PlayClock::Halt(TimePoint now) {
    m_base = Read(now);
    m_running = false;
}

void PlayClock::SetRate(double rate, TimePoint now) {
    m_base = Raw(now);
    m_since = now;
    m_rate = rate;
}

void PlayClock::Observe(double position, TimePoint now) {
    if (!m_running)
        return;
    const double raw = Raw(now);
    const double error = position - raw;
    m_base = raw + (std::abs(error) > kLeap ? error : error * kPull);
    m_since = now;
}

} // namespace kirolane::mpv
