// Whom a boxed process is connected to.

#include "backends/remote/sound_door.h"
#include "boxed.h"
#include "support/temporary_folder.h"
#include "wire/channel.h"

#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>

namespace kirolane::tests {

namespace {

using Address = sockaddr_un;

Address At(const std::string& path) {
    Address address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path);
    return address;
}

int Connect(int socket, const Address& address, socklen_t size = sizeof(Address)) {
    return Error(connect(socket, reinterpret_cast<const sockaddr*>(&address), size));
}

/// A server that nobody minds, with that much room for those who wait.
class Server {
public:
    explicit Server(const Address& address, int room = 8) {
        EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_socket, room), 0);
    }
    ~Server() { close(m_socket); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

private:
    int m_socket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

int Stream(int flags = 0) {
    return socket(AF_UNIX, SOCK_STREAM | flags, 0);
}

/// The door of a child process that tries that in its box.
class Visitor {
public:
    Visitor(const std::function<int()>& attempt, std::vector<std::string> sockets) {
        int ends[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
        if ((m_process = fork()) == 0) {
            const wire::Channel channel{wire::Descriptor(ends[1])};
            EXPECT_EQ(box::LimitFiles(), "");
            box::CallLimits limits = box::LimitCalls(box::Outputs("pulse"));
            EXPECT_TRUE(channel.Send(wire::Boxed{}, limits.missing, limits.connects));
            close(limits.connects);
            _exit(attempt());
        }
        close(ends[1]);
        const wire::Channel channel{wire::Descriptor(ends[0])};
        pollfd handed{channel.Get(), POLLIN, 0};
        poll(&handed, 1, 5000);
        wire::Packet packet;
        EXPECT_EQ(channel.Receive(packet, true), wire::Received::Message);
        door.emplace(std::move(packet.descriptor), m_process, std::move(sockets));
    }
    /// Answers until the child has ended: what its attempt came to.
    int Error() {
        while (door->IsOpen()) {
            pollfd waiting{door->Get(), POLLIN, 0};
            if (poll(&waiting, 1, 5000) <= 0)
                break;
            door->AnswerOne();
        }
        EXPECT_FALSE(door->IsOpen());
        int status = 0;
        waitpid(m_process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::optional<remote::SoundDoor> door;

private:
    pid_t m_process = 0;
};

} // namespace

TEST(SoundDoor, LeadsToTheSoundServersAlone) {
    const TemporaryFolder folder;
    const Address sound = At(folder.Path("native"));
    const Address bus = At(folder.Path("bus"));
    const Address full = At(folder.Path("full"));
    const Address abstract = At(std::string(1, '\0') + folder.Path("native"));
    const Server servers[] = {Server(sound), Server(bus), Server(abstract)};
    const Server fullServer(full, 0);
    const int first = Stream();
    ASSERT_EQ(Connect(first, full), 0) << "it has taken the only place";

    const struct {
        const char* name;
        std::function<int()> attempt;
        int error;
        bool passesUnboxed = true;
    } rows[] = {
        {"the sound server", [&] { return Connect(Stream(), sound); }, 0},
        {"another server", [&] { return Connect(Stream(), bus); }, EACCES},
        {"an abstract one", [&] { return Connect(Stream(), abstract); }, EACCES},
        {"part of the name", [&] { return Connect(Stream(), sound, sizeof(sa_family_t) + 3); }, EACCES,
         false},
        {"no address", [&] { return Error(connect(Stream(), nullptr, 4)); }, EACCES, false},
        {"no socket", [&] { return Connect(999, sound); }, EBADF, false},
        {"a server that lets wait", [&] { return Connect(Stream(SOCK_NONBLOCK), full); }, EAGAIN, false},
        {"and one who would", [&] { return Connect(Stream(), full); }, EAGAIN, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Visitor(row.attempt, {folder.Path("native"), folder.Path("full")}).Error(), row.error)
            << row.name;
        if (row.passesUnboxed) {
            EXPECT_EQ(ErrorOf(row.attempt), 0) << row.name << ", without the box";
        }
    }
    close(first);
}

TEST(SoundDoor, GivesTheSocketInItsPlaceAndAsItWas) {
    const TemporaryFolder folder;
    const Address sound = At(folder.Path("native"));
    const Server server(sound);
    const auto attempt = [&] {
        for (const int flag : {0, static_cast<int>(SOCK_NONBLOCK)}) {
            const int socket = Stream(flag);
            EXPECT_EQ(Connect(socket, sound), 0);
            EXPECT_EQ(write(socket, "hello", 5), 5);
            EXPECT_EQ(fcntl(socket, F_GETFL) & O_NONBLOCK, flag);
        }
        return ::testing::Test::HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(Visitor(attempt, {folder.Path("native")}).Error(), 0);
}

TEST(SoundDoor, TakesNothingButAListener) {
    EXPECT_FALSE(remote::SoundDoor(wire::Descriptor(memfd_create("x", MFD_CLOEXEC)), getpid(), {}).IsOpen());
    EXPECT_FALSE(remote::SoundDoor(wire::Descriptor(), getpid(), {}).IsOpen());
}

TEST(SoundDoor, IsShutWhereNobodyStandsAtIt) {
    const TemporaryFolder folder;
    const Address sound = At(folder.Path("native"));
    const Server server(sound);
    Visitor visitor([&] { return Connect(Stream(), sound); }, {folder.Path("native")});
    visitor.door.emplace(wire::Descriptor(), getpid(), std::vector<std::string>{});
    EXPECT_EQ(visitor.Error(), ENOSYS) << "and nobody waits";
}

} // namespace kirolane::tests
