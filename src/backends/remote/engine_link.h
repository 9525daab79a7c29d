#pragma once

#include "backends/remote/engine_process.h"
#include "backends/remote/sound_door.h"
#include "wire/board.h"
#include "wire/channel.h"

#include <chrono>
#include <optional>
#include <string>

namespace kirolane::remote {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// One engine: its process, the way to it, and the answers that it owes.
class EngineLink {
public:
    EngineLink(EngineProcess process, wire::Channel channel, TimePoint now);

    [[nodiscard]] const wire::Channel& Channel() const { return m_channel; }
    EngineProcess TakeProcess() { return std::move(m_process); }
    [[nodiscard]] const wire::Board& Board() const { return m_board; }
    [[nodiscard]] wire::Board& Board() { return m_board; }

    /// It has started, and takes an assignment.
    [[nodiscard]] bool Ready() const { return m_ready; }
    void TakeReady(TimePoint now);
    /// It has its players.
    [[nodiscard]] bool Assigned() const { return m_board.IsThere(); }
    void SetBoard(wire::Board board) { m_board = std::move(board); }

    /// One more of its calls has been answered: false if there have been more than any engine needs.
    bool CountCall(TimePoint now);

    /// It has told of its box, and handed over this, which may be nothing.
    void TakeBoxed(wire::Descriptor connects);
    [[nodiscard]] bool Boxed() const { return m_door.has_value(); }
    /// Its way to the sound servers; null if it is shut.
    [[nodiscard]] SoundDoor* Door() { return m_door && m_door->IsOpen() ? &*m_door : nullptr; }

    /// It is asked to load, for which it has so long.
    void Expect(std::chrono::milliseconds limit, TimePoint now);
    void TakeBegun() { m_beginDue.reset(); }
    void TakeLoaded(TimePoint now);
    [[nodiscard]] bool Loading() const { return m_loads > 0; }
    /// It has a new picture. Once they cease, it is asked whether it lives.
    void TakePicture(TimePoint now) { m_lastPicture = now; }
    /// Asks it whether it lives, unless it owes an answer. False if it takes nothing more.
    bool Ask(TimePoint now);
    void TakePong(TimePoint now);

    /// When something is to be done about it if nothing is heard before: it is to be asked, or taken for
    /// hanging. `holdsFile`: else nobody waits for it.
    [[nodiscard]] std::optional<TimePoint> Deadline(bool holdsFile) const;
    /// True if it owes an answer for too long. Asks it whether it lives, if it is time for that.
    bool Hangs(bool holdsFile, TimePoint now);

    /// Whoever minds it has slept that long: its answers are due so much later.
    void Postpone(Clock::duration time);

    /// One more message has come: false if there have been more than any engine needs to send.
    bool Count(TimePoint now);
    /// One more line; false if it is one too many.
    bool CountLine(TimePoint now);

private:
    /// When it is to be asked.
    [[nodiscard]] TimePoint AskAt() const;
    /// How many of something come within a time.
    struct Flow {
        TimePoint since{};
        int count = 0;
        bool Add(TimePoint now, std::chrono::seconds time, int most);
    };

    EngineProcess m_process;
    wire::Channel m_channel;
    wire::Board m_board;
    std::optional<SoundDoor> m_door;
    bool m_ready = false;
    int m_loads = 0; ///< under way
    std::optional<TimePoint> m_readyDue;
    std::optional<TimePoint> m_beginDue;
    std::optional<TimePoint> m_loadDue;
    std::optional<TimePoint> m_pongDue;
    TimePoint m_lastWord;
    std::optional<TimePoint> m_lastPicture; ///< after which it has not been asked
    Flow m_messages;
    Flow m_lines;
    Flow m_calls;
};

} // namespace kirolane::remote
