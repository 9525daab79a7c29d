#pragma once

#include "wire/shared_memory.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>

namespace kirolane::wire {

inline constexpr unsigned kMostPlayers = 2; ///< of one engine

/// Where a player is, and how that goes on until more is known.
struct Motion {
    double position = 0.0;   ///< seconds of the movie
    double picture = 0.0;    ///< where a seek finds the picture that stands there; not of one that runs
    double rate = 0.0;       ///< seconds of it a second; 0 while the position stands
    std::int64_t asOf = 0;   ///< as of when, nanoseconds of the steady clock
    std::int64_t until = 0;  ///< from then on it stands, unless more is told
    std::uint64_t order = 0; ///< number of the last order carried out
    std::uint64_t atEnd = 0; ///< the data has run out

    [[nodiscard]] double At(std::chrono::steady_clock::time_point time) const;
};

/// What is told of a player's pictures, as bits.
inline constexpr std::uint32_t kHasFrame = 1;
inline constexpr std::uint32_t kHasPicture = 2;

/// The state of an engine's players in memory that the program with the windows reads without asking. That
/// one makes it; the engine writes it. Any thread, but one writer of a motion at a time.
class Board {
public:
    static Board Make() { return Board(SharedMemory::Make("kirolane-board", kBytes)); }
    static Board Attach(Descriptor memory) { return Board(SharedMemory::Attach(std::move(memory), kBytes)); }
    Board() = default;

    [[nodiscard]] bool IsThere() const { return m_memory.IsThere(); }
    [[nodiscard]] int Get() const { return m_memory.Get(); }

    void SetMotion(unsigned player, const Motion& motion);
    /// False if the writer does not come to an end with it. What is read can be any nonsense.
    bool GetMotion(unsigned player, Motion& motion) const;

    void SetFlags(unsigned player, std::uint32_t flags) { State(player).flags = flags; }
    [[nodiscard]] std::uint32_t Flags(unsigned player) const { return State(player).flags; }

    /// Engine: something of that player's pictures has changed. True if that is still to be said.
    bool Note(unsigned player) { return State(player).noted.exchange(1) == 0; }
    /// Reader: it has been said, and is about to be looked at.
    void ClearNote(unsigned player) { State(player).noted = 0; }

private:
    static constexpr std::size_t kWords = sizeof(Motion) / sizeof(std::uint64_t);
    struct PlayerState {
        std::atomic<std::uint32_t> sequence; ///< odd while the motion is being written
        std::atomic<std::uint32_t> flags;
        std::atomic<std::uint32_t> noted;
        std::array<std::atomic<std::uint64_t>, kWords> motion;
    };
    static constexpr std::size_t kBytes = sizeof(PlayerState) * kMostPlayers;

    explicit Board(SharedMemory memory) : m_memory(std::move(memory)) {}
    [[nodiscard]] PlayerState& State(unsigned player) const {
        return reinterpret_cast<PlayerState*>(m_memory.Data())[player];
    }

    SharedMemory m_memory;
};

} // namespace kirolane::wire
