// An engine that does what it likes, as KIROLANE_HOSTILE says.

#include "wire/channel.h"
#include "wire/surface.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

using namespace kirolane::wire;

namespace {

Channel channel{Descriptor(kEngineDescriptor)};

Packet Next(Kind kind) {
    Packet packet;
    while (true) {
        const Received received = channel.Receive(packet, true);
        if (received == Received::Ended)
            std::_Exit(0);
        if (received == Received::Message && packet.kind == kind)
            return packet;
        pollfd waiting{channel.Get(), POLLIN, 0};
        poll(&waiting, 1, -1);
    }
}

struct Unknown {
    static constexpr Kind kKind = static_cast<Kind>(77);
    char bytes[100] = {};
};

/// More than a message has.
void SendTwoDescriptors() {
    const int files[] = {kEngineDescriptor, kEngineDescriptor};
    const Kind kind = Kind::Pong;
    iovec part{const_cast<Kind*>(&kind), sizeof kind};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof files)] = {};
    msghdr header{};
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    header.msg_control = control;
    header.msg_controllen = sizeof control;
    cmsghdr* first = CMSG_FIRSTHDR(&header);
    first->cmsg_level = SOL_SOCKET;
    first->cmsg_type = SCM_RIGHTS;
    first->cmsg_len = CMSG_LEN(sizeof files);
    std::memcpy(CMSG_DATA(first), files, sizeof files);
    sendmsg(kEngineDescriptor, &header, MSG_NOSIGNAL);
}

/// As much of it as it can.
void Flood(const std::string& act) {
    const int file = open("/dev/null", O_RDONLY);
    while (true) {
        if (act == "changes")
            channel.Send(Changed{0});
        else if (act == "lines")
            channel.Send(Line{}, std::string(8000, 'x'));
        else if (act == "pairs")
            SendTwoDescriptors();
        else
            channel.Send(Pong{}, {}, file);
    }
}

} // namespace

int main() {
    const std::string act = std::getenv("KIROLANE_HOSTILE");
    if (act == "exits")
        return 1;
    channel.Send(Ready{});
    if (act == "ready twice")
        channel.Send(Ready{});
    if (act == "loads unasked")
        channel.Send(Loaded{0, 1, 5.0});
    auto board = SharedMemory::Attach(std::move(Next(Kind::Assign).descriptor), 64);
    const auto load = Next(Kind::Load).As<Load>();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    channel.Send(Begun{load->player, load->number});
    if (act == "dies")
        std::abort();
    if (act == "hangs")
        pause();
    if (act == "no number")
        channel.Send(Loaded{load->player, load->number, nan});
    if (act == "endless")
        channel.Send(Loaded{load->player, load->number, 1e300});
    if (act == "stranger")
        channel.Send(Loaded{7, load->number, 5.0});
    if (act == "unknown")
        channel.Send(Unknown{});
    if (act == "short")
        send(kEngineDescriptor, "abc", 3, 0);
    for (int times = 0; act == "two boxes" && times < 2; ++times)
        channel.Send(Boxed{}, "a line", kEngineDescriptor);
    if (act == "empty")
        send(kEngineDescriptor, "", 0, 0);
    if (act == "changes" || act == "lines" || act == "descriptors" || act == "pairs")
        Flood(act);
    // Left is nonsense in all memory that the two share, under a load that has succeeded.
    channel.Send(Loaded{load->player, load->number, 5.0});
    std::mt19937 random(5);
    while (true)
        for (std::size_t i = 0; i < board.Bytes(); ++i)
            board.Data()[i] = static_cast<std::uint8_t>(random());
}
