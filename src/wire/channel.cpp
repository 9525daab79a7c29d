#include "wire/channel.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <sys/socket.h>
#include <sys/uio.h>

namespace kirolane::wire {

namespace {
constexpr std::size_t kLargest = 512 + kLongestText; ///< of a message
constexpr std::size_t kControl = CMSG_SPACE(sizeof(int));
static_assert(sizeof(Orders) + sizeof(Kind) <= 512 && sizeof(Assign) + sizeof(Kind) <= 512);
} // namespace

std::pair<Descriptor, Descriptor> Channel::MakePair() {
    int ends[2] = {-1, -1};
    socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends);
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

bool Channel::Send(Kind kind, std::span<const std::byte> message, std::string_view text,
                   int descriptor) const {
    text = text.substr(0, kLongestText);
    iovec parts[] = {
        {&kind, sizeof kind},
        {const_cast<std::byte*>(message.data()), message.size()},
        {const_cast<char*>(text.data()), text.size()},
    };
    alignas(cmsghdr) std::array<char, kControl> control{};
    msghdr header{};
    header.msg_iov = parts;
    header.msg_iovlen = std::size(parts);
    if (descriptor >= 0) {
        header.msg_control = control.data();
        header.msg_controllen = control.size();
        cmsghdr* first = CMSG_FIRSTHDR(&header);
        first->cmsg_level = SOL_SOCKET;
        first->cmsg_type = SCM_RIGHTS;
        first->cmsg_len = CMSG_LEN(sizeof descriptor);
        std::memcpy(CMSG_DATA(first), &descriptor, sizeof descriptor);
    }
    ssize_t sent = 0;
    do
        sent = sendmsg(m_socket.Get(), &header, MSG_NOSIGNAL | MSG_DONTWAIT);
    while (sent < 0 && errno == EINTR);
    return sent >= 0;
}

Received Channel::Receive(Packet& packet, bool takeDescriptor) const {
    std::array<std::byte, kLargest> bytes;
    alignas(cmsghdr) std::array<char, kControl> control{};
    iovec part{bytes.data(), bytes.size()};
    msghdr header{};
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    if (takeDescriptor) {
        header.msg_control = control.data();
        header.msg_controllen =
            CMSG_LEN(sizeof(int)); // of a second descriptor nothing would be left but itself
    }
    ssize_t count = 0;
    do
        count = recvmsg(m_socket.Get(), &header, MSG_CMSG_CLOEXEC | MSG_DONTWAIT);
    while (count < 0 && errno == EINTR);
    if (count < 0)
        return errno == EAGAIN ? Received::Nothing : Received::Ended;
    packet.descriptor = Descriptor();
    if (const cmsghdr* first = CMSG_FIRSTHDR(&header);
        first != nullptr && first->cmsg_level == SOL_SOCKET && first->cmsg_type == SCM_RIGHTS) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(first), sizeof descriptor);
        packet.descriptor = Descriptor(descriptor);
    }
    if (count < static_cast<ssize_t>(sizeof packet.kind))
        return Received::Ended;
    std::memcpy(&packet.kind, bytes.data(), sizeof packet.kind);
    packet.bytes.assign(bytes.begin() + sizeof packet.kind, bytes.begin() + count);
    return Received::Message;
}

std::string JoinTexts(std::span<const std::string> texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += text + '\0';
    return joined;
}

std::vector<std::string> SplitTexts(const std::string& joined) {
    std::vector<std::string> texts;
    for (auto begin = joined.begin(); begin != joined.end();) {
        const auto end = std::find(begin, joined.end(), '\0');
        texts.emplace_back(begin, end);
        begin = end == joined.end() ? end : end + 1;
    }
    return texts;
}

} // namespace kirolane::wire
