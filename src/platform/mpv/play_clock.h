#pragma once

#include <chrono>

namespace kirolane::mpv {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// A smooth position made of libmpv's reports, which come about once a frame. Between reports time runs on at
/// the rate. A report can only be late, by the waits of threads: of a few in a row the least late corrects
/// the reading; those of a start's first moments tell nothing. Readings never go backwards but by Set.
/// Seconds of the movie.
class PlayClock {
public:
    /// Halts at that position.
    void Set(double position);
    void Start(TimePoint now);
    void Halt(TimePoint now);
    void SetRate(double rate, TimePoint now);
    void Shift(double seconds);
    /// The reports are off by a constant: the first ones after each start tell it, so that the reading goes
    /// by the start. One that leaps ahead is then none of the movie's.
    void SetReportsOff(bool off);
    /// libmpv reported this position. Ignored while halted.
    void Observe(double position, TimePoint now);

    [[nodiscard]] double Read(TimePoint now) const;
    [[nodiscard]] bool Running() const { return m_running; }
    /// Reports have corrected the reading since the start.
    [[nodiscard]] bool Settled() const { return m_running && m_settled; }

private:
    [[nodiscard]] double Raw(TimePoint now) const;
    void Correct(double position, TimePoint now);
    /// A few reports in a row lie off the reading by that much.
    void TakeError(double error, TimePoint now);
    void Forget() { m_reports = 0; }

    double m_base = 0.0;
    TimePoint m_since;
    double m_rate = 1.0;
    bool m_running = false;
    mutable double m_lastRead = 0.0;
    bool m_settled = false;
    TimePoint m_judgedFrom;
    bool m_reportsOff = false;
    double m_offset = 0.0;    ///< to be added to a report
    int m_reports = 0;        ///< since the last correction
    double m_leastLate = 0.0; ///< of those, how far ahead of the reading
};

} // namespace kirolane::mpv
