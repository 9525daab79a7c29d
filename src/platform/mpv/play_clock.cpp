#include "platform/mpv/play_clock.h"

#include <algorithm>
#include <cmath>

namespace kirolane::mpv {

namespace {
/// A report that lies further off is taken as it is.
constexpr double kLeap = 0.15;
/// Reports that are judged together, by the least late of them.
constexpr int kTogether = 8;
/// After a start, until picture and sound have found each other, reports are not judged.
constexpr std::chrono::milliseconds kUnsteady{150};
/// The part of their difference that is taken over; of the first after a start, all.
constexpr double kPull = 0.7;
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
    Forget();
}

void PlayClock::Start(TimePoint now) {
    m_since = now;
    m_running = true;
    m_settled = false;
    m_judgedFrom = now + kUnsteady;
    Forget();
}

void PlayClock::Halt(TimePoint now) {
    m_base = Read(now);
    m_running = false;
}

void PlayClock::SetRate(double rate, TimePoint now) {
    m_base = Raw(now);
    m_since = now;
    m_rate = rate;
    Forget();
}

void PlayClock::Shift(double seconds) {
    m_base += seconds;
    m_offset += seconds;
    Forget();
}

void PlayClock::SetReportsOff(bool off) {
    m_reportsOff = off;
    m_offset = 0.0;
    Forget();
}

void PlayClock::Observe(double position, TimePoint now) {
    if (!m_running)
        return;
    const double raw = Raw(now);
    const double error = position + m_offset - raw;
    if (std::abs(error) > kLeap) {
        if (!m_reportsOff || error < 0.0)
            Correct(raw + error, now);
        return;
    }
    if (now < m_judgedFrom)
        return;
    m_leastLate = m_reports == 0 ? error : std::max(m_leastLate, error);
    if (++m_reports == kTogether)
        TakeError(m_leastLate, now);
}

void PlayClock::TakeError(double error, TimePoint now) {
    if (m_reportsOff && !m_settled) {
        m_offset -= error;
        error = 0.0;
    }
    Correct(Raw(now) + error * (m_settled ? kPull : 1.0), now);
}

void PlayClock::Correct(double position, TimePoint now) {
    m_base = position;
    m_since = now;
    m_settled = true;
    Forget();
}

} // namespace kirolane::mpv
