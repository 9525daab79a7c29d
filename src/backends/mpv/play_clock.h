#pragma once

#include <chrono>
#include <optional>

namespace kirolane::mpv {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// A smooth position made of libmpv's reports, which come about once a frame. Between reports time runs on at
/// the rate, but not for long: where they cease the player may stand, so somebody has to ask. A report can
/// only be late, by the waits of threads: of a few in a row the least late corrects the reading; those of a
/// start's first moments tell nothing. Readings never go backwards but by Set. Seconds of the movie.
class PlayClock {
public:
    /// Halts at that position.
    void Set(double position);
    void Start(TimePoint now);
    void Halt(TimePoint now);
    void SetRate(double rate, TimePoint now);
    /// libmpv reported this position. Ignored while halted.
    void Observe(double position, TimePoint now);

    /// From when on libmpv is to be asked where it is: its reports have ceased. Nothing while halted.
    [[nodiscard]] std::optional<TimePoint> Doubtful() const;
    /// It is being asked. The answer comes by Observe or Trust; without one, or with one that tells nothing
    /// new, the reading soon stands.
    void Ask(TimePoint now);
    /// It plays on, though it cannot tell where.
    void Trust(TimePoint now);

    [[nodiscard]] double Read(TimePoint now) const;
    [[nodiscard]] bool Running() const { return m_running; }
    /// While it runs: from then on the reading stands, unless a report comes.
    [[nodiscard]] TimePoint StandsFrom() const { return m_standsFrom; }

private:
    [[nodiscard]] double Raw(TimePoint now) const;
    /// Counts from now on, without the time in which the reading stood.
    void Resume(TimePoint now);
    /// It plays; the next word is to come within `silence`.
    void Expect(TimePoint now, Clock::duration silence);
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
    double m_lastReport = 0.0;
    TimePoint m_doubtful;
    TimePoint m_standsFrom; ///< the reading, unless a report comes
    bool m_asked = false;
    int m_reports = 0;        ///< since the last correction
    double m_leastLate = 0.0; ///< of those, how far ahead of the reading
};

} // namespace kirolane::mpv
