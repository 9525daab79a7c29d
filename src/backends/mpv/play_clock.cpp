#include "backends/mpv/play_clock.h"

#include <algorithm>
#include <cmath>

namespace kirolane::mpv {

namespace {
/// A report that lies further off is taken as it is.
constexpr double kLeap = 0.15;
/// An answer that lies further behind comes from a player that may just have stopped.
constexpr double kOnTime = 0.1;
/// Reports that are judged together, by the least late of them.
constexpr int kTogether = 8;
/// After a start, until picture and sound have found each other, reports are not judged.
constexpr std::chrono::milliseconds kUnsteady{150};
/// The part of their difference that is taken over; of the first after a start, all.
constexpr double kPull = 0.7;
/// Without a report, until libmpv is asked; after an answer, until it is asked again; from the question to
/// the last moment for an answer.
constexpr std::chrono::milliseconds kSilence{200};
constexpr std::chrono::milliseconds kAskAgain{1000};
constexpr std::chrono::milliseconds kAnswer{100};
} // namespace

double PlayClock::Raw(TimePoint now) const {
    if (!m_running)
        return m_base;
    const auto runs = std::max(std::min(now, m_standsFrom) - m_since, Clock::duration::zero());
    return m_base + std::chrono::duration<double>(runs).count() * m_rate;
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
    m_lastReport = m_base;
    m_asked = false;
    Expect(now, kSilence);
    Forget();
}

void PlayClock::Halt(TimePoint now) {
    m_base = Read(now);
    m_running = false;
}

void PlayClock::SetRate(double rate, TimePoint now) {
    Resume(now);
    m_rate = rate;
    Forget();
}

std::optional<TimePoint> PlayClock::Doubtful() const {
    return m_running ? std::optional(m_doubtful) : std::nullopt;
}

void PlayClock::Expect(TimePoint now, Clock::duration silence) {
    m_doubtful = now + silence;
    m_standsFrom = m_doubtful + kAnswer;
}

void PlayClock::Resume(TimePoint now) {
    m_base = Raw(now);
    m_since = now;
}

void PlayClock::Ask(TimePoint now) {
    m_doubtful = now + kAskAgain;
    m_asked = true;
}

void PlayClock::Trust(TimePoint now) {
    if (m_running) {
        Resume(now);
        Expect(now, kAskAgain);
    }
}

void PlayClock::Observe(double position, TimePoint now) {
    if (!m_running)
        return;
    const double error = position - Raw(now);
    if (position > m_lastReport) {
        Resume(now);
        Expect(now, m_asked && error > -kOnTime ? kAskAgain : kSilence);
        m_asked = false;
    }
    m_lastReport = position;
    if (std::abs(error) > kLeap) {
        Correct(position, now);
        return;
    }
    if (now < m_judgedFrom)
        return;
    m_leastLate = m_reports == 0 ? error : std::max(m_leastLate, error);
    if (++m_reports == kTogether)
        TakeError(m_leastLate, now);
}

void PlayClock::TakeError(double error, TimePoint now) {
    Correct(Raw(now) + error * (m_settled ? kPull : 1.0), now);
}

void PlayClock::Correct(double position, TimePoint now) {
    m_base = position;
    m_since = now;
    m_settled = true;
    Forget();
}

} // namespace kirolane::mpv
