#include "backends/remote/sound_door.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

namespace kirolane::remote {

namespace {

/// An engine could hand over whatever it has open.
bool IsListener(int descriptor) {
    std::error_code error;
    const auto kind = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
    return kind == "anon_inode:seccomp notify";
}

/// Not the engine's own socket, which it could make a waiting one under our hands.
wire::Descriptor ConnectedTo(const std::string& path, int& error) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    wire::Descriptor own(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const bool stands = connect(own.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    error = stands ? 0 : errno;
    return own;
}

} // namespace

SoundDoor::SoundDoor(wire::Descriptor listener, pid_t engine, std::vector<std::string> sockets)
    : m_engine(static_cast<int>(syscall(SYS_pidfd_open, engine, 0))), m_sockets(std::move(sockets)) {
    if (IsListener(listener.Get()))
        m_listener = std::move(listener);
}

bool SoundDoor::AnswerOne() {
    pollfd waiting{Get(), POLLIN, 0};
    if (poll(&waiting, 1, 0) <= 0)
        return false;
    if ((waiting.revents & POLLIN) == 0) {
        m_listener.Close();
        return false;
    }
    seccomp_notif call{};
    if (ioctl(Get(), SECCOMP_IOCTL_NOTIF_RECV, &call) != 0)
        return false; // the caller has gone
    seccomp_notif_resp answer{};
    answer.id = call.id;
    answer.error = Connect(call);
    ioctl(Get(), SECCOMP_IOCTL_NOTIF_SEND, &answer);
    return true;
}

int SoundDoor::Connect(const seccomp_notif& call) const {
    const auto& arguments = call.data.args;
    const std::string path = ReadPath(static_cast<pid_t>(call.pid), arguments[1], arguments[2]);
    // Looked at after the reading: was that still the caller's memory?
    if (ioctl(Get(), SECCOMP_IOCTL_NOTIF_ID_VALID, &call.id) != 0)
        return -EINTR;
    if (std::find(m_sockets.begin(), m_sockets.end(), path) == m_sockets.end())
        return -EACCES;
    const auto number = static_cast<std::uint32_t>(arguments[0]);
    const wire::Descriptor theirs(static_cast<int>(syscall(SYS_pidfd_getfd, m_engine.Get(), number, 0)));
    const int flags = fcntl(theirs.Get(), F_GETFL);
    if (flags < 0)
        return -EBADF;
    int error = 0;
    const wire::Descriptor connected = ConnectedTo(path, error);
    if (error != 0)
        return -error;
    if ((flags & O_NONBLOCK) == 0)
        fcntl(connected.Get(), F_SETFL, 0);
    seccomp_notif_addfd place{};
    place.id = call.id;
    place.flags = SECCOMP_ADDFD_FLAG_SETFD;
    place.srcfd = static_cast<std::uint32_t>(connected.Get());
    place.newfd = number;
    place.newfd_flags = O_CLOEXEC;
    return ioctl(Get(), SECCOMP_IOCTL_NOTIF_ADDFD, &place) >= 0 ? 0 : -errno;
}

std::string SoundDoor::ReadPath(pid_t thread, std::uint64_t address, std::uint64_t size) {
    sockaddr_un wanted{};
    constexpr std::size_t first = offsetof(sockaddr_un, sun_path);
    if (size <= first || size > sizeof wanted)
        return "";
    iovec here{&wanted, size};
    iovec there{reinterpret_cast<void*>(address), size};
    if (process_vm_readv(thread, &here, 1, &there, 1, 0) != static_cast<ssize_t>(size) ||
        wanted.sun_family != AF_UNIX)
        return "";
    return {&wanted.sun_path[0], strnlen(&wanted.sun_path[0], size - first)};
}

} // namespace kirolane::remote
