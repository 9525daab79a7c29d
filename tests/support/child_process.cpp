#include "support/child_process.h"

#include <cstdio>
#include <filesystem>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::tests {

int StatusOfChild(const std::function<void()>& body) {
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

void RunAsOrdinaryUser(const std::string& folder, const std::function<void()>& check) {
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
