#include "backends/remote/engine_link.h"

#include "wire/sound_servers.h"

#include <algorithm>

namespace kirolane::remote {

namespace {
/// With cold libraries, from a medium that is busy.
constexpr std::chrono::seconds kStart{15};
constexpr std::chrono::milliseconds kAnswer{1500};
constexpr std::chrono::milliseconds kAskEvery{1000};
/// Without a new picture, where there has been one.
constexpr std::chrono::milliseconds kStill{300};
/// What a load may take on top of the time that it was given.
constexpr std::chrono::milliseconds kLoadGrace{500};

/// Pictures of two players come at 60 a second, and a change of file makes a few more.
constexpr int kMostMessages = 2000;
constexpr int kMostLines = 20;
constexpr std::chrono::seconds kLinesWithin{10};

/// Each opening and each look for a server that has gone makes a few tens of them.
constexpr int kMostCalls = 1000;
constexpr std::chrono::seconds kCallsWithin{1};
} // namespace

EngineLink::EngineLink(EngineProcess process, wire::Channel channel, TimePoint now)
    : m_process(std::move(process)), m_channel(std::move(channel)), m_readyDue(now + kStart),
      m_lastWord(now) {}

void EngineLink::TakeReady(TimePoint now) {
    m_ready = true;
    m_lastWord = now;
    m_readyDue.reset();
}

void EngineLink::TakeBoxed(wire::Descriptor connects) {
    m_door.emplace(std::move(connects), m_process.Number(), wire::SoundServerSockets());
}

void EngineLink::Expect(std::chrono::milliseconds limit, TimePoint now) {
    if (m_loads++ == 0)
        m_beginDue = now + kAnswer;
    m_pongDue.reset(); // it would come after the load
    m_loadDue = std::max(m_loadDue.value_or(now), now) + limit + kLoadGrace;
}

void EngineLink::TakeLoaded(TimePoint now) {
    m_lastWord = now;
    if (m_loads > 0 && --m_loads == 0)
        m_loadDue.reset();
}

void EngineLink::TakePong(TimePoint now) {
    m_pongDue.reset();
    m_lastWord = now;
}

std::optional<TimePoint> EngineLink::Deadline(bool holdsFile) const {
    std::optional<TimePoint> next;
    for (const auto& due : {m_readyDue, m_beginDue, m_loadDue, m_pongDue})
        if (due && (!next || *due < *next))
            next = due;
    if (!next && holdsFile && m_ready)
        next = AskAt();
    return next;
}

TimePoint EngineLink::AskAt() const {
    const TimePoint usual = m_lastWord + kAskEvery;
    return m_lastPicture ? std::min(usual, *m_lastPicture + kStill) : usual;
}

bool EngineLink::Ask(TimePoint now) {
    if (m_loads > 0 || m_pongDue)
        return true;
    m_lastPicture.reset();
    m_pongDue = now + kAnswer;
    return m_channel.Send(wire::Ping{});
}

bool EngineLink::Hangs(bool holdsFile, TimePoint now) {
    for (auto* due : {&m_readyDue, &m_beginDue, &m_loadDue, &m_pongDue}) {
        if (!*due || **due > now)
            continue;
        if (!m_process.IsTraced())
            return true;
        *due = now + kAskEvery;
    }
    return m_ready && holdsFile && now >= AskAt() && !Ask(now);
}

void EngineLink::Postpone(Clock::duration time) {
    for (auto* due : {&m_readyDue, &m_beginDue, &m_loadDue, &m_pongDue})
        if (*due)
            **due += time;
}

bool EngineLink::Flow::Add(TimePoint now, std::chrono::seconds time, int most) {
    if (now - since >= time) {
        since = now;
        count = 0;
    }
    return ++count <= most;
}

bool EngineLink::Count(TimePoint now) {
    return m_messages.Add(now, std::chrono::seconds(1), kMostMessages);
}

bool EngineLink::CountLine(TimePoint now) {
    return m_lines.Add(now, kLinesWithin, kMostLines);
}

bool EngineLink::CountCall(TimePoint now) {
    return m_calls.Add(now, kCallsWithin, kMostCalls);
}

} // namespace kirolane::remote
