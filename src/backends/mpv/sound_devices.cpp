#include "backends/mpv/sound_devices.h"

#include "wire/sound_servers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <span>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kirolane::mpv {

namespace {

using Bytes = std::span<const std::uint8_t>;
using Clock = std::chrono::steady_clock;

// The first word of a client, to which each server has an answer, if only a refusal.

/// PulseAudio: a frame of 276 bytes on the channel of commands; the command "authenticate" by protocol 32
/// with a cookie of 256 zeros.
constexpr auto kPulseHello = [] {
    std::array<std::uint8_t, 20 + 276> hello{
        0,   0, 1, 0x14, 0xff, 0xff, 0xff, 0xff, 0, 0,
        0,   0, 0, 0,    0,    0,    0,    0,    0, 0, // frame
        'L', 0, 0, 0,    8,    'L',  0,    0,    0, 0,
        'L', 0, 0, 0,    32,   'x',  0,    0,    1, 0}; // command, tag, protocol
    return hello;
}();

/// PipeWire, in the machine's own order of bytes: to object 0 the method "hello", one structure that holds
/// the number 3, the protocol's version.
constexpr std::array<std::uint32_t, 10> kPipeWireHello{0, (1U << 24) | 24, 0, 0, 16, 14, 4, 4, 3, 0};

/// A connection on which a server's answer is awaited.
class Call {
public:
    Call() = default;
    ~Call() { HangUp(); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    void Dial(const std::string& path, Bytes hello) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.empty() || path.size() >= sizeof address.sun_path)
            return;
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (m_socket < 0)
            return;
        if (connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
            m_state = ServerState::Hangs;
            if (send(m_socket, hello.data(), hello.size(), MSG_NOSIGNAL) < 0)
                HangUp();
        } else if (errno == EAGAIN) { // so many wait at its door already
            m_state = ServerState::Hangs;
            HangUp();
        } else {
            HangUp();
        }
    }

    [[nodiscard]] pollfd Awaited() const { return {m_socket, POLLIN, 0}; }
    void Answered() {
        m_state = ServerState::Answers;
        HangUp();
    }
    void TakeAsAnswering() { m_state = ServerState::Answers; }
    [[nodiscard]] bool Waits() const { return m_socket >= 0; }
    [[nodiscard]] ServerState State() const { return m_state; }

private:
    void HangUp() {
        if (m_socket >= 0)
            close(m_socket);
        m_socket = -1;
    }

    int m_socket = -1;
    ServerState m_state = ServerState::Gone;
};

void DialPipeWire(Call& call, const wire::SoundServers& servers) {
    const auto* hello = reinterpret_cast<const std::uint8_t*>(kPipeWireHello.data());
    call.Dial(servers.pipewire, {hello, sizeof kPipeWireHello});
}

void DialPulse(Call& call, const wire::SoundServers& servers) {
    if (servers.pulseElsewhere)
        call.TakeAsAnswering();
    else
        call.Dial(servers.pulse, kPulseHello);
}

/// The kernel's nodes for playing: pcmC0D0p and the like.
int CountOutputs() {
    std::error_code error;
    const std::filesystem::directory_iterator nodes("/dev/snd", error);
    return static_cast<int>(std::count_if(begin(nodes), end(nodes), [](const auto& node) {
        const std::string name = node.path().filename();
        return name.starts_with("pcm") && name.ends_with('p');
    }));
}

} // namespace

SoundDevices LookForSoundDevices(std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    Call pipewire;
    Call pulse;
    const wire::SoundServers servers = wire::FindSoundServers();
    DialPipeWire(pipewire, servers);
    DialPulse(pulse, servers);
    while (pipewire.Waits() || pulse.Waits()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        std::array<pollfd, 2> awaited{pipewire.Awaited(), pulse.Awaited()};
        const int answers = poll(awaited.data(), awaited.size(), std::max(0, static_cast<int>(left.count())));
        if (answers == 0 || (answers < 0 && errno != EINTR))
            break;
        if (answers < 0)
            continue;
        if (awaited[0].revents != 0)
            pipewire.Answered();
        if (awaited[1].revents != 0)
            pulse.Answered();
    }
    return {pipewire.State(), pulse.State(), CountOutputs()};
}

} // namespace kirolane::mpv
