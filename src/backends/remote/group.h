#pragma once

#include "backends/remote/engine_link.h"
#include "backends/remote/seat.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace kirolane::remote {

/// Players that share an engine, from one engine to the next. Under the lock of the supervisor.
struct Group {
    std::vector<std::unique_ptr<Seat>> seats;
    std::unique_ptr<EngineLink> link; ///< null while it has none
    bool wanted = false;              ///< it is to have one without a file, too
    std::uint64_t lastOrder = 0;
    std::string endedWith; ///< the file that was there at the last end of an engine
    TimePoint endedAt{};   ///< and when

    [[nodiscard]] const wire::Board* Board() const {
        return link != nullptr && link->Assigned() ? &link->Board() : nullptr;
    }
    [[nodiscard]] unsigned IndexOf(const Seat& seat) const;
    /// A file is in it, or on its way.
    [[nodiscard]] bool HoldsFile() const;
    /// Files are on their way back into it.
    [[nodiscard]] bool Returns() const;

    // What goes to the engine. False if that takes nothing more.

    bool Assign(const wire::EngineOptions& options, TimePoint now);
    bool SendSurface(Seat& seat);
    /// A load that is wanted.
    bool SendLoad(Seat& seat, TimePoint now);
    /// Numbers them. While files are on their way back they are not sent: SendState tells it all.
    bool SendOrders(std::span<const wire::Order> orders);
    /// What each player is to do, once all files are back.
    bool SendState();
    /// The files to the places where they stood.
    bool SendReturns(std::chrono::milliseconds limit, TimePoint now);
};

} // namespace kirolane::remote
