// A text file on a disk that is full: the child process mounts a small one that only itself sees.

#include "backends/posix/posix_filesystem.h"
#include "support/temporary_folder.h"

#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane {
namespace {

constexpr int kNotAllowed = 77;

void Put(const std::string& path, const std::string& text) {
    std::ofstream(path) << text;
}

/// True in a name space where the process may mount.
bool MayMount() {
    const auto user = std::to_string(::geteuid());
    const auto group = std::to_string(::getegid());
    if (::geteuid() == 0)
        return ::unshare(CLONE_NEWNS) == 0;
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    Put("/proc/self/setgroups", "deny");
    Put("/proc/self/uid_map", "0 " + user + " 1");
    Put("/proc/self/gid_map", "0 " + group + " 1");
    return true;
}

/// In the child; its exit status.
int WriteOnFullDisk(const std::string& folder) {
    if (!MayMount() || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") != 0)
        return kNotAllowed;
    const std::string path = folder + "/text";
    const std::string old = "the old settings\n";
    Put(path, old);
    Put(folder + "/filler", std::string(1U << 20U, 'x')); // as much as fits

    posix::PosixFileSystem files(folder, folder);
    std::string cause;
    const auto sink = files.OpenForWriting(path, cause);
    if (sink == nullptr)
        return 1;
    if (sink->Write(std::string(100'000, 'y')) != "No space left on device")
        return 2;
    std::string kept;
    if (!files.ReadText(path, kept, cause) || kept != old)
        return 3;
    return sink->Write("as long as before\n").empty() ? 0 : 4;
}

TEST(FullDisk, GivesACauseAndLeavesTheOldText) {
    const tests::TemporaryFolder folder;
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0)
        ::_exit(WriteOnFullDisk(folder.Path()));
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kNotAllowed)
        GTEST_SKIP() << "no right to mount here";
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the step of WriteOnFullDisk that failed";
}

} // namespace
} // namespace kirolane
