#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace kirolane::headless {

/// A clock that moves only by hand. Milliseconds throughout.
class HandClock {
public:
    using Ticket = std::uint64_t;

    [[nodiscard]] std::int64_t Now() const { return m_now; }

    /// Has `call` made when the clock comes to `delay` from now, and if `period` is above 0 every period from
    /// there on. Periods that pass while the clock leaps are not made up for.
    Ticket Add(std::int64_t delay, std::int64_t period, std::function<void()> call);
    void Remove(Ticket ticket);

    /// Lets time pass without making the calls that fall due, as for one who waits.
    void Leap(std::int64_t milliseconds) { m_now += milliseconds; }
    /// Goes to the next call due at or before `until` and makes it. False, without a move, if there is none.
    /// Calls may add, remove and move the clock themselves.
    bool Step(std::int64_t until);
    /// Goes to that time if it lies ahead.
    void MoveTo(std::int64_t time) { m_now = time > m_now ? time : m_now; }
    /// When the next call is due; false if none is.
    bool NextDue(std::int64_t& time) const;

private:
    struct Entry {
        Ticket ticket;
        std::int64_t due;
        std::int64_t period;
        std::function<void()> call;
    };

    std::int64_t m_now = 0;
    Ticket m_lastTicket = 0;
    std::vector<Entry> m_entries;
};

} // namespace kirolane::headless
