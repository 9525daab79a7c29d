#pragma once

#include "engine/box/box.h"
#include "support/child_process.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>

#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::tests {

/// Of an act, as the C library gives it: 0 where it goes through, else why it does not.
inline int Error(long result) {
    return result < 0 ? errno : 0;
}

/// What that act comes to in a child process, after those preparations.
inline int ErrorOf(
    const std::function<int()>& act, const std::function<void()>& prepare = [] {}) {
    return StatusOfChild([&] {
        prepare();
        _exit(act());
    });
}

/// 0 where the kernel has none.
inline int LandlockAbi() {
    return std::max(0, static_cast<int>(syscall(SYS_landlock_create_ruleset, nullptr, 0,
                                                LANDLOCK_CREATE_RULESET_VERSION)));
}

/// As a kernel that has not got that call.
inline void TakeAway(long call) {
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{std::size(filter), filter};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

} // namespace kirolane::tests
