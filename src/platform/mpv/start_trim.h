#pragma once

#include "platform/mpv/play_clock.h"

#include <optional>

namespace kirolane::mpv {

class Player;

/// Takes out what the waits of threads and of the sound device put between twins that were started together:
/// for a moment the silent one of the two plays a little faster or slower. Only what the start put there: the
/// distance at which they were started stays. At rates other than 1 the sound's filters make larger steps of
/// a change of speed than there is to take out. While the silent one shows none of its own pictures, its
/// count alone is moved. Any order to one of them ends it. The conductor's, under its lock.
class StartTrim {
public:
    /// Both have just been told to start.
    void Begin(const Player& stage, Player& preview, TimePoint now);
    /// To be called when the deadline has come and after each order.
    void Advance(TimePoint now);
    [[nodiscard]] std::optional<TimePoint> Deadline() const;
    /// Nothing to do with that player any more.
    void Leave(const Player& player);

private:
    /// It need not wait to make its first correction.
    [[nodiscard]] bool CanShift() const;
    void Look(TimePoint now);
    void End(TimePoint now);

    const Player* m_stage = nullptr; ///< null while there is nothing to do
    Player* m_preview = nullptr;
    double m_distance = 0.0; ///< seconds of the movie by which the stage is to be ahead
    bool m_nudging = false;
    int m_nudges = 0; ///< and shifts
    TimePoint m_next;
    TimePoint m_limit;
};

} // namespace kirolane::mpv
