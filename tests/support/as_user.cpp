#include "support/as_user.h"

#include <cstdio>
#include <filesystem>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::tests {

namespace {
constexpr unsigned kNobody = 65534;
}

void RunAsOrdinaryUser(const std::function<void()>& check) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
            ::_exit(2);
        check();
        std::fflush(nullptr);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "the check failed as an ordinary user, see above";
}

void OpenToAll(const std::string& path) {
    std::filesystem::permissions(path, std::filesystem::perms::all);
}

} // namespace kirolane::tests
