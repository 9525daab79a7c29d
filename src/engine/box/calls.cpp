#include "engine/box/box.h"
#include "engine/box/filter.h"

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/prctl.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::box {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t kArchitecture = 0;
#endif

// What the headers of older systems lack.
#ifndef PR_SET_VMA
#define PR_SET_VMA 0x53564d41
#endif

/// Rows that any outputs need. Memory may be written and then run: the scaler of pictures makes its code.
std::vector<CallRule> BaseRules(std::uint32_t self) {
    constexpr std::uint32_t kNewSpaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC |
                                         CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
    // clang-format off
    return {
        // Memory.
        {SYS_brk}, {SYS_madvise}, {SYS_mlock}, {SYS_mlock2}, {SYS_mmap}, {SYS_mprotect}, {SYS_mremap},
        {SYS_munlock}, {SYS_munmap}, {SYS_membarrier},
        // Threads, but no processes. clone3 hides its flags from a filter: the C library takes clone instead.
        {SYS_clone, {0, CLONE_THREAD | kNewSpaces, CLONE_THREAD}},
        {SYS_exit}, {SYS_exit_group}, {SYS_futex}, {SYS_get_robust_list}, {SYS_getpid}, {SYS_getppid},
        {SYS_gettid}, {SYS_rseq}, {SYS_sched_getaffinity}, {SYS_sched_get_priority_max},
        {SYS_sched_get_priority_min}, {SYS_sched_getparam}, {SYS_sched_getscheduler}, {SYS_sched_yield},
        {SYS_set_robust_list}, {SYS_set_tid_address},
        // Signals to itself alone.
        {SYS_kill, {0, kWhole, self}}, {SYS_tgkill, {0, kWhole, self}},
        {SYS_restart_syscall}, {SYS_rt_sigaction}, {SYS_rt_sigprocmask}, {SYS_rt_sigreturn}, {SYS_sigaltstack},
        // Time.
        {SYS_clock_getres}, {SYS_clock_gettime}, {SYS_clock_nanosleep}, {SYS_gettimeofday}, {SYS_nanosleep},
        {SYS_timerfd_create}, {SYS_timerfd_gettime}, {SYS_timerfd_settime},
        // Files: which ones, LimitFiles has said. No change of names, rights or times.
        {SYS_close}, {SYS_dup}, {SYS_dup3}, {SYS_faccessat}, {SYS_faccessat2}, {SYS_fadvise64}, {SYS_fallocate},
        {SYS_fstat}, {SYS_fstatfs}, {SYS_ftruncate}, {SYS_getcwd}, {SYS_getdents64}, {SYS_lseek}, {SYS_newfstatat},
        {SYS_openat}, {SYS_pread64}, {SYS_preadv}, {SYS_pwrite64}, {SYS_read}, {SYS_readlinkat}, {SYS_readv},
        {SYS_statfs}, {SYS_statx}, {SYS_write}, {SYS_writev},
        // Not F_SETOWN and its kin: they send signals.
        {SYS_fcntl, {1, kWhole, F_DUPFD}}, {SYS_fcntl, {1, kWhole, F_DUPFD_CLOEXEC}},
        {SYS_fcntl, {1, kWhole, F_GETFD}}, {SYS_fcntl, {1, kWhole, F_SETFD}},
        {SYS_fcntl, {1, kWhole, F_GETFL}}, {SYS_fcntl, {1, kWhole, F_SETFL}},
        {SYS_fcntl, {1, kWhole, F_SETLK}}, {SYS_fcntl, {1, kWhole, F_SETLKW}},
        {SYS_fcntl, {1, kWhole, F_ADD_SEALS}}, {SYS_fcntl, {1, kWhole, F_GET_SEALS}},
        // Not TIOCSTI, which types at a terminal, nor what answers a seccomp listener.
        {SYS_ioctl, {1, kWhole, FIONBIO}}, {SYS_ioctl, {1, kWhole, FIONREAD}}, {SYS_ioctl, {1, kWhole, TCGETS}},
        // Waiting.
        {SYS_epoll_create1}, {SYS_epoll_ctl}, {SYS_epoll_pwait}, {SYS_eventfd2}, {SYS_pipe2}, {SYS_ppoll},
        {SYS_pselect6},
        // Messages of open sockets, and none with an address.
        {SYS_getsockopt}, {SYS_recvfrom}, {SYS_recvmsg}, {SYS_sendmsg}, {SYS_shutdown},
        {SYS_sendto, {5, kWhole, 0}},
        // Who and where it is.
        {SYS_getcpu}, {SYS_getegid}, {SYS_geteuid}, {SYS_getgid}, {SYS_getrandom}, {SYS_getresgid},
        {SYS_getresuid}, {SYS_getrusage}, {SYS_getuid}, {SYS_sysinfo}, {SYS_uname},
        // Itself alone; not the signal at its parent's death, nor the limits.
        {SYS_getpriority}, {SYS_setpriority, {0, kWhole, PRIO_PROCESS}, {1, kWhole, 0}},
        {SYS_prctl, {0, kWhole, PR_SET_NAME}}, {SYS_prctl, {0, kWhole, PR_GET_NAME}},
        {SYS_prctl, {0, kWhole, PR_SET_VMA}}, {SYS_prctl, {0, kWhole, PR_SET_TIMERSLACK}},
        {SYS_prlimit64, {2, kWhole, 0}, {2, kWhole, 0, true}},
#ifdef __x86_64__ // older ways to say the same
        {SYS_access}, {SYS_dup2}, {SYS_epoll_create}, {SYS_epoll_wait}, {SYS_eventfd}, {SYS_getrlimit}, {SYS_lstat},
        {SYS_open}, {SYS_pipe}, {SYS_poll}, {SYS_readlink}, {SYS_select}, {SYS_stat}, {SYS_time},
#endif
    };
    // clang-format on
}

/// For PulseAudio and PipeWire.
std::vector<CallRule> ServerRules() {
    constexpr std::uint32_t kKind = 0xf; // of a socket's type; the rest are flags
    return {
        // A datagram would reach whom its message names.
        {SYS_socket, {0, kWhole, AF_UNIX}, {1, kKind, SOCK_STREAM}},
        {SYS_connect, {}, {}, Answer::Ask},
        {SYS_getpeername},
        {SYS_getsockname},
        {SYS_memfd_create},
        {SYS_setsockopt},
    };
}

/// For ALSA: sound devices and their timers, and the memory in which a mixer's players meet.
std::vector<CallRule> CardRules() {
    constexpr std::uint32_t kLetter = 0xff00;
    constexpr std::uint32_t kReads = 0x80000000;
    constexpr std::uint32_t kWrites = 0x40000000;
    return {
        {SYS_ioctl, {1, kLetter, 'A' << 8}},
        {SYS_ioctl, {1, kLetter, 'U' << 8}},
        // The letter is the terminals', too; theirs have no direction and lower numbers.
        {SYS_ioctl, {1, kLetter | kReads, 'T' << 8 | kReads}},
        {SYS_ioctl, {1, kLetter | kWrites, 'T' << 8 | kWrites}},
        {SYS_ioctl, {1, 0xfffffffc, 'T' << 8 | 0xa0}},
        {SYS_semctl},
        {SYS_semget},
        {SYS_semop},
        {SYS_semtimedop},
        {SYS_shmat},
        {SYS_shmctl},
        {SYS_shmdt},
        {SYS_shmget},
    };
}

void Append(std::vector<CallRule>& rules, const std::vector<CallRule>& more) {
    rules.insert(rules.end(), more.begin(), more.end());
}

} // namespace

Outputs::Outputs(std::string_view names) {
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(','));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        server = server || name == "pulse" || name == "pipewire";
        card = card || name == "alsa";
    }
}

CallLimits LimitCalls(Outputs outputs) {
    if (kArchitecture == 0)
        return {-1, "seccomp: not known for this processor"};
    std::vector<CallRule> rules = BaseRules(static_cast<std::uint32_t>(getpid()));
    if (outputs.server)
        Append(rules, ServerRules());
    if (outputs.card)
        Append(rules, CardRules());
    std::vector<sock_filter> filter = MakeFilter(rules, kArchitecture);
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    unsigned long flags = SECCOMP_FILTER_FLAG_TSYNC | SECCOMP_FILTER_FLAG_TSYNC_ESRCH;
    if (outputs.server)
        flags |= SECCOMP_FILTER_FLAG_NEW_LISTENER;
    const auto listener = static_cast<int>(syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &program));
    if (listener < 0)
        return {-1, std::string("seccomp: ") + std::strerror(errno)}; // NOLINT(concurrency-mt-unsafe)
    return {outputs.server ? listener : -1, ""};
}

} // namespace kirolane::box
