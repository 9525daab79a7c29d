#pragma once

#include "backends/mpv/mpv_media.h"
#include "wire/channel.h"

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace kirolane::engine {

/// Carries out on libmpv what the program with the windows orders, and tells it what it needs to know. One
/// message after the other, on the main thread.
class Service {
public:
    explicit Service(wire::Channel& channel) : m_channel(channel) {}
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// Waits for the players that this engine is to have, and makes their decks. False if nobody is there to
    /// tell it.
    bool TakeAssignment();
    /// libmpv's names of all outputs that its players may try.
    [[nodiscard]] const std::string& Outputs() const { return m_outputs; }
    /// Until the channel ends.
    void Run();

private:
    struct Seat {
        std::unique_ptr<PlayerEngine> engine;
        std::uint64_t order = 0; ///< number of the last one carried out; under m_boardMutex
    };

    /// False once the channel has ended.
    bool Next(wire::Packet& packet);
    bool Assigned(wire::Packet& packet);
    void Take(wire::Packet& packet);
    void TakeSurface(wire::Packet& packet);
    void TakeLoad(wire::Packet& packet);
    void TakeOrders(const wire::Orders& orders);
    /// Null for a number that no player has.
    PlayerEngine* PlayerOf(std::uint32_t number);
    /// What the other side waits for.
    template <class Message> void Answer(const Message& message) const;
    /// Any thread that holds no lock of the players.
    void WriteBoard();
    void WriteFlags(unsigned player);

    wire::Channel& m_channel;
    wire::Board m_board;
    std::mutex m_boardMutex;
    std::mutex m_flagsMutex; ///< of what is written is the newest the last
    std::unique_ptr<mpv::MpvMedia> m_media;
    std::vector<Seat> m_seats;
    std::string m_outputs;
    bool m_seated = false; ///< all of them; under m_boardMutex
};

} // namespace kirolane::engine
