#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::tests {

/// Runs a body in a child process. 0 where all it expects holds, 1 where something does not (which is told),
/// what it exits with by itself, or the negative of the signal that ended it.
inline int StatusOfChild(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        std::fflush(nullptr);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// Runs a check as an ordinary user, in a child process, which gives up root's rights where the tests run as
/// root. What the check expects and does not get fails the test. `folder` is opened to all before.
inline void RunAsOrdinaryUser(const std::string& folder, const std::function<void()>& check) {
    constexpr unsigned nobody = 65534;
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    const int status = StatusOfChild([&] {
        ASSERT_TRUE(::geteuid() != 0 ||
                    (::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0));
        check();
    });
    EXPECT_EQ(status, 0) << "the check failed as an ordinary user, see above";
}

} // namespace kirolane::tests
