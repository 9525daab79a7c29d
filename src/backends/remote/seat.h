#pragma once

#include "backends/remote/engine_link.h"
#include "backends/remote/remote_frames.h"
#include "contract/backend/mediaengine.h"
#include "wire/medium.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kirolane::remote {

/// What is wanted of one player, whichever engine it plays in, and what is known of it. Under the lock of the
/// supervisor, but for the pictures.
struct Seat {
    wire::PlayerRole role;
    std::shared_ptr<RemoteFrames> frames; ///< null until the player is made

    // The file that it holds.
    std::shared_ptr<const wire::Medium> medium; ///< null while it is empty
    double duration = 0.0;                      ///< seconds
    bool ended = false;                         ///< given up; it rests at its end

    // What is wanted of it.
    bool running = false;
    double rate = 1.0;
    std::int32_t volume = 256;
    std::optional<double> goesTo; ///< ordered, and not known to be carried out
    std::uint64_t order = 0;      ///< number of the last order given to an engine

    /// A file on its way into it.
    enum class Loading : std::uint8_t { No, Wanted, Sent, Begun, Answered };
    Loading loading = Loading::No;
    std::uint32_t number = 0; ///< of the load under way, or of the last one
    std::shared_ptr<const wire::Medium> coming;
    TimePoint deadline;   ///< of that load
    int lost = 0;         ///< engines that have ended before they began with it
    double answer = 0.0;  ///< its duration; 0 for a failure, which has been told
    bool returns = false; ///< a new engine is to hold its file again, and has not answered yet

    /// Its state while no engine tells: where it was at the end of the last one, and how that goes on.
    struct Standing {
        wire::Motion motion;
        std::uint32_t flags = 0;
    };
    std::optional<Standing> standing;
    bool returned = false; ///< that has just ended: its pictures may count again, and nobody has been told
    std::uint64_t standsUntil = 0; ///< number of the order after which the new engine tells; 0: not known yet

    /// Nothing of a file is left in it.
    void Empty();
    void TakeOrder(const PlayerOrder& wanted, TimePoint now);
    /// Its engine has ended, of which `board` was, or has not told yet.
    void Stand(const wire::Board* board, unsigned index, TimePoint now);

    // Of the engine that it plays in, null for none, as seat number `index`.

    [[nodiscard]] double Position(const wire::Board* board, unsigned index, TimePoint at);
    [[nodiscard]] bool AtEnd(const wire::Board* board, unsigned index);
    [[nodiscard]] std::uint32_t Flags(const wire::Board* board, unsigned index);

private:
    /// What is told of it now.
    wire::Motion Motion(const wire::Board* board, unsigned index);
    /// It stands from now on, or its place moves so fast.
    void GoOn(double pace, TimePoint now);
    /// Whether its new engine tells.
    void LookForReturn(const wire::Board* board, unsigned index);

    double m_lastRead = 0.0;
    wire::Motion m_lastMotion; ///< read whole
};

} // namespace kirolane::remote
