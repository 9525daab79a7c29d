// What becomes of the terminal, and of whoever reads standard error, leaves the process as it is.

#include "platform/common/runtime.h"
#include "platform/posix/standard_streams.h"
#include "support/temporary_folder.h"

#include <csignal>
#include <functional>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane {
namespace {

/// Writes more than any pipe holds to standard error as `prepare` leaves it, in a process of its own; how
/// that ended. A write that waits is ended by SIGALRM.
int StatusAfterLines(const std::function<void()>& prepare) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(10);
        prepare();
        posix::SecureStandardStreams();
        ::raise(SIGHUP);
        for (int line = 0; line < 20000; ++line)
            Runtime::WriteLine("a line that nobody reads");
        const int file = ::open("/dev/null", O_RDONLY);
        std::quick_exit(file > STDERR_FILENO ? 7 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(ProcessTest, StandardErrorThatTakesNothingNeitherEndsNorHoldsIt) {
    int silent[2];
    int socket[2];
    ASSERT_EQ(::pipe(silent), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    const tests::TemporaryFolder folder;
    const std::string file = folder.Write("log", "");
    const auto on = [](int descriptor) { ::dup2(descriptor, STDERR_FILENO); };
    EXPECT_EQ(StatusAfterLines([&] { on(silent[1]); }), 7) << "a full pipe";
    EXPECT_EQ(::fcntl(silent[1], F_GETFL) & O_NONBLOCK, 0) << "others write to it too";
    EXPECT_EQ(StatusAfterLines([&] { on(socket[1]); }), 7) << "a full socket";
    EXPECT_EQ(StatusAfterLines([&] { on(::open("/dev/full", O_WRONLY)); }), 7);
    EXPECT_EQ(StatusAfterLines([&] {
                  const rlimit limit{1000, 1000};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  on(::open(file.c_str(), O_WRONLY));
              }),
              7)
        << "a file that may not grow";
    EXPECT_EQ(StatusAfterLines([] {
                  for (const int descriptor : {0, 1, 2})
                      ::close(descriptor);
              }),
              7)
        << "none at all";
    ::close(silent[0]);
    ::close(socket[0]);
    EXPECT_EQ(StatusAfterLines([&] { on(silent[1]); }), 7) << "a reader that has gone";
    EXPECT_EQ(StatusAfterLines([&] { on(socket[1]); }), 7);
    ::close(silent[1]);
    ::close(socket[1]);
}

TEST(ProcessTest, TheLastLineArrivesWhereverStandardErrorLeads) {
    int pipe[2];
    int socket[2];
    ASSERT_EQ(::pipe(pipe), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    for (const int* ends : {pipe, socket}) {
        if (::fork() == 0) {
            ::dup2(ends[1], STDERR_FILENO);
            posix::SecureStandardStreams();
            Runtime::WriteLine("the last");
            std::quick_exit(0);
        }
        ::close(ends[1]);
        std::string read(100, ' ');
        read.resize(static_cast<std::size_t>(::read(ends[0], read.data(), read.size())));
        EXPECT_EQ(read, "kirolane: the last\n");
        ::close(ends[0]);
        ::wait(nullptr);
    }
}

} // namespace
} // namespace kirolane
