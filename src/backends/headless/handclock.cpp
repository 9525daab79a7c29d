#include "backends/headless/handclock.h"

#include <algorithm>

namespace kirolane::headless {

HandClock::Ticket HandClock::Add(std::int64_t delay, std::int64_t period, std::function<void()> call) {
    m_entries.push_back({++m_lastTicket, m_now + delay, period, std::move(call)});
    return m_lastTicket;
}

void HandClock::Remove(Ticket ticket) {
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.ticket == ticket; });
}

bool HandClock::Step(std::int64_t until) {
    // The earliest; of equal ones the one added first.
    const auto next = std::min_element(m_entries.begin(), m_entries.end(),
                                       [](const Entry& a, const Entry& b) { return a.due < b.due; });
    if (next == m_entries.end() || next->due > until)
        return false;
    MoveTo(next->due);
    const auto call = next->call;
    if (next->period > 0)
        next->due += next->period * ((m_now - next->due) / next->period + 1);
    else
        m_entries.erase(next);
    call();
    return true;
}

bool HandClock::NextDue(std::int64_t& time) const {
    const auto next = std::min_element(m_entries.begin(), m_entries.end(),
                                       [](const Entry& a, const Entry& b) { return a.due < b.due; });
    if (next == m_entries.end())
        return false;
    time = next->due;
    return true;
}

} // namespace kirolane::headless
