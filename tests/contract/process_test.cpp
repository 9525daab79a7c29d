// What becomes of the terminal, and of whoever reads standard error, leaves the process as it is.

#include "backends/posix/command_line.h"
#include "backends/posix/posix_folders.h"
#include "backends/posix/quit_signals.h"
#include "backends/posix/standard_streams.h"
#include "contract/backend/host.h"
#include "support/child_process.h"

#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kirolane::tests {

/// Writes lines to standard error as `prepare` leaves it, in a process of its own; how that ended, 7 for
/// well. A write that waits is ended by SIGALRM.
static int StatusAfterLines(int lines, const std::function<void()>& prepare) {
    return StatusOfChild([&] {
        ::alarm(10);
        prepare();
        posix::SecureStandardStreams();
        ::raise(SIGHUP);
        for (int line = 0; line < lines; ++line)
            WriteErrorLine("a line");
        std::quick_exit(::open("/dev/null", O_RDONLY) > STDERR_FILENO ? 7 : 1);
    });
}

TEST(ProcessTest, WhereverStandardErrorLeadsItNeitherEndsNorHoldsTheProcess) {
    int pipe[2];
    int socket[2];
    ASSERT_EQ(::pipe(pipe), 0);
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, socket), 0);
    for (const int* ends : {pipe, socket}) {
        SCOPED_TRACE(ends == pipe ? "pipe" : "socket");
        const auto leadThere = [&] { ::dup2(ends[1], STDERR_FILENO); };
        EXPECT_EQ(StatusAfterLines(1, leadThere), 7);
        ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
        char read[100];
        EXPECT_EQ(::read(ends[0], read, sizeof read), 17) << "the last line arrives";
        EXPECT_EQ(StatusAfterLines(30000, leadThere), 7) << "a full one";
        EXPECT_EQ(::fcntl(ends[1], F_GETFL) & O_NONBLOCK, 0) << "others write to it too";
        ::close(ends[0]);
        EXPECT_EQ(StatusAfterLines(9, leadThere), 7) << "a reader that has gone";
        ::close(ends[1]);
    }
    EXPECT_EQ(StatusAfterLines(9, [] { ::dup2(::open("/dev/full", O_WRONLY), STDERR_FILENO); }), 7);
    EXPECT_EQ(StatusAfterLines(9, [] { ::close_range(0, 2, 0); }), 7) << "none at all";
}

TEST(ProcessTest, TheCommandLineNamesOneFileOrFolderOrIsRefused) {
    const auto read = [](std::vector<const char*> arguments) {
        arguments.insert(arguments.begin(), "kirolane");
        return posix::ReadCommandLine(static_cast<int>(arguments.size()), arguments.data());
    };
    ::setenv("HOME", "/a/x/.././", 1);
    EXPECT_EQ(posix::HomeFolder(), "/a");
    const std::string here = posix::AbsolutePath(".");
    EXPECT_EQ(read({"-session", "a", "./x//y/."}).path, here + "/x/y");
    EXPECT_EQ(read({"--", "--help"}).path, here + "/--help");
    EXPECT_EQ(read({"/a/x/.././", ""}).path, "/a");
    EXPECT_NE(read({"/", "b"}).fault, "") << "of two the first counts, with a line";
    EXPECT_EQ(read({"a", "--version"}).answer, "Kirolane " KIROLANE_VERSION "\n");
    for (const char* unknown : {"-h", "--hel", "-", "-platform"}) {
        const auto asked = read({"a", unknown, "--help"});
        EXPECT_TRUE(asked.refused && asked.answer.empty()) << unknown;
        EXPECT_NE(asked.fault.find(unknown), std::string::npos);
    }
}

TEST(ProcessTest, TheEndOfTheSessionWaitsForNoProgramThatHangs) {
    const auto hang = [] {
        ::alarm(10);
        posix::WatchQuitSignals([] {});
        ::raise(SIGTERM);
        for (;;) // as in a file whose disk does not answer
            ::pause();
    };
    EXPECT_EQ(StatusOfChild(hang), 0);
}

} // namespace kirolane::tests
