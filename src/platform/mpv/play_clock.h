#pragma once

#include <chrono>

namespace kirolane::mpv {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// A smooth position made of libmpv's reports, which come about once a frame. Between reports time runs on at
/// the rate; a report pulls the reading gently, so that the wait of a thread does not show as a jolt.
/// Readings never go backwards but by Set. Seconds of the movie.
class PlayClock {
public:
    /// Halts at that position.
    void Set(double position);
    void Start(TimePoint now);
    void Halt(TimePoint now);
    void SetRate(double rate, TimePoint now);
    /// libmpv reported this position. Ignored while halted.
    void Observe(double position, TimePoint now);

    [[nodiscard]] double Read(TimePoint now) const;
    [[nodiscard]] bool Running() const { return m_running; }

private:
    [[nodiscard]] double Raw(TimePoint now) const;

    double m_base = 0.0;
    TimePoint m_since;
    double m_rate = 1.0;
    bool m_running = false;
    mutable double m_lastRead = 0.0;
};

} // namespace kirolane::mpv
