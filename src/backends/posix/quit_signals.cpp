#include "backends/posix/quit_signals.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace kirolane::posix {

namespace {

/// Milliseconds that the event loop has to answer; a handler that opens a file may hold it up for seconds.
constexpr int kQuitLimit = 700;

int g_told = -1; ///< a handler is a bare function

void Tell(int) {
    const int before = errno;
    static_cast<void>(!::write(g_told, "", 1));
    errno = before;
}

void AwaitSignal(int source) {
    char told = 0;
    while (::read(source, &told, 1) < 0 && errno == EINTR) {
    }
}

} // namespace

void WatchQuitSignals(std::function<void()> quit) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return; // the system ends the process, as it always did
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    g_told = ends[1];
    std::thread([source = ends[0], quit = std::move(quit)] {
        AwaitSignal(source);
        quit();
        pollfd again{source, POLLIN, 0};
        while (::poll(&again, 1, kQuitLimit) < 0 && errno == EINTR) {
        }
        std::quick_exit(EXIT_SUCCESS);
    }).detach();
    for (const int signal : {SIGTERM, SIGINT}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = Tell;
        action.sa_flags = SA_RESTART;
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace kirolane::posix
