#pragma once

#include "wire/descriptor.h"
#include "wire/messages.h"

#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kirolane::wire {

/// A message as it came.
struct Packet {
    Kind kind{};
    std::vector<std::byte> bytes; ///< behind the kind
    Descriptor descriptor;

    /// The struct of its kind. Nothing if it is too short for it.
    template <class Message> [[nodiscard]] std::optional<Message> As() const {
        static_assert(std::is_trivially_copyable_v<Message>);
        if (kind != Message::kKind || bytes.size() < sizeof(Message))
            return std::nullopt;
        Message message;
        std::memcpy(&message, bytes.data(), sizeof message);
        return message;
    }
    /// What stands behind that struct.
    template <class Message> [[nodiscard]] std::string Text() const {
        const auto* text = reinterpret_cast<const char*>(bytes.data());
        return bytes.size() > sizeof(Message) ? std::string(text + sizeof(Message), text + bytes.size()) : "";
    }
};

enum class Received : std::uint8_t { Message, Nothing, Ended };

/// One end of the socket between the two processes. Sends may come from any thread; none waits.
class Channel {
public:
    explicit Channel(Descriptor socket) : m_socket(std::move(socket)) {}

    /// Both ends; not open if there are none to be had.
    static std::pair<Descriptor, Descriptor> MakePair();

    /// False if the other end is gone, or has not read for long.
    template <class Message>
    bool Send(const Message& message, std::string_view text = {}, int descriptor = -1) const {
        static_assert(std::is_trivially_copyable_v<Message>);
        return Send(Message::kKind, std::as_bytes(std::span(&message, 1)), text, descriptor);
    }
    /// The next message, without waiting. Takes a descriptor that comes with it only if asked to.
    Received Receive(Packet& packet, bool takeDescriptor) const;

    [[nodiscard]] int Get() const { return m_socket.Get(); }
    void Close() { m_socket.Close(); }

private:
    bool Send(Kind kind, std::span<const std::byte> message, std::string_view text, int descriptor) const;

    Descriptor m_socket;
};

/// Texts one behind the other, and apart again.
std::string JoinTexts(std::span<const std::string> texts);
std::vector<std::string> SplitTexts(const std::string& joined);

} // namespace kirolane::wire
