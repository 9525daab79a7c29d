#include "backends/posix/standard_streams.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::posix {

namespace {

constexpr const char* kNowhere = "/dev/null";
/// How long the end of the process waits for relays.
constexpr std::chrono::milliseconds kLastLines{200};

struct Relay {
    int descriptor;
    std::future<void> ended;
};

/// Never destroyed: the process may end in many ways.
std::vector<Relay>& Relays() {
    static auto* relays = new std::vector<Relay>;
    return *relays;
}

void SendNowhere(int descriptor) {
    const int nowhere = ::open(kNowhere, O_RDWR | O_CLOEXEC);
    if (nowhere < 0)
        return;
    ::dup2(nowhere, descriptor);
    ::close(nowhere);
}

/// The failed write says all there is to know.
void Ignore(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

/// Writes to the descriptor go into a pipe that never makes anyone wait, and from there on by a thread that
/// may. Lines under way when the process crashes are lost.
void StartRelay(int descriptor) {
    int ends[2];
    const int target = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
    if (target < 0 || ::pipe2(ends, O_CLOEXEC) != 0) {
        SendNowhere(descriptor);
        return;
    }
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    ::dup2(ends[1], descriptor);
    ::close(ends[1]);
    std::packaged_task<void()> pump([source = ends[0], target] {
        char buffer[4096];
        for (ssize_t got = 0; (got = ::read(source, buffer, sizeof buffer)) != 0;)
            for (ssize_t done = 0; done < got;) {
                const ssize_t written = ::write(target, buffer + done, static_cast<std::size_t>(got - done));
                if (written < 0 && errno != EINTR)
                    break;
                done += written > 0 ? written : 0;
            }
    });
    Relays().push_back({descriptor, pump.get_future()});
    std::thread(std::move(pump)).detach();
}

void FinishRelays() {
    const auto limit = std::chrono::steady_clock::now() + kLastLines;
    for (Relay& relay : Relays()) {
        SendNowhere(relay.descriptor); // the end of what the thread reads
        relay.ended.wait_until(limit);
    }
}

/// Writes to it never wait from now on. The flag for that belongs to what has been opened, which others
/// share, so it is opened anew where the system lets us.
void NeverWait(int descriptor) {
    struct stat info {};
    if (::fstat(descriptor, &info) != 0 || S_ISREG(info.st_mode) || S_ISDIR(info.st_mode))
        return;
    const int own = ::open(("/proc/self/fd/" + std::to_string(descriptor)).c_str(),
                           O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (own >= 0) {
        ::dup2(own, descriptor);
        ::close(own);
    } else if (errno == ENXIO && S_ISFIFO(info.st_mode)) {
        SendNowhere(descriptor); // its reader has gone already
    } else {
        StartRelay(descriptor);
    }
}

} // namespace

void SecureStandardStreams() {
    // A file opened later must not come to stand where a library writes its complaints.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open(kNowhere, O_RDWR); // takes the lowest number that is free
    // Programs that the process starts have these two by default again: a handler does not outlive exec.
    Ignore(SIGPIPE, [](int) {});
    Ignore(SIGXFSZ, [](int) {});
    Ignore(SIGHUP, SIG_IGN);
    Ignore(SIGTTOU, SIG_IGN); // with a handler the write would be tried again and again
    NeverWait(STDOUT_FILENO);
    NeverWait(STDERR_FILENO);
    std::at_quick_exit(FinishRelays);
}

} // namespace kirolane::posix
