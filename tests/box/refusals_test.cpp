// What a boxed process is refused, and that each of it goes through without the box.

#include "boxed.h"
#include "support/temporary_folder.h"

#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <future>
#include <string>

#include <arpa/inet.h>
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/wait.h>

namespace kirolane::tests {

namespace {

/// What a boxed process would like to lay hands on. Made by the user who tries.
struct World {
    World() {
        setenv("HOME", folder.Path().c_str(), 1);
        file = folder.Write("file", "text");
        medium = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        Listen(inet, &address, sizeof address);
        address.sin_port = 0;
        socklen_t size = sizeof address;
        getsockname(inet, reinterpret_cast<sockaddr*>(&address), &size);
        std::memcpy(&abstract.sun_path[1], &address.sin_port, sizeof address.sin_port);
        Listen(local, &abstract, sizeof abstract);
        int pipe[2];
        EXPECT_EQ(pipe2(pipe, O_CLOEXEC), 0);
        if ((victim = fork()) == 0) {
            prctl(PR_SET_DUMPABLE, 1); // which a change of user has undone
            prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY, 0, 0, 0);
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            close(pipe[0]);
            close(pipe[1]);
            pause();
            _exit(0);
        }
        close(pipe[1]);
        char end = 0;
        EXPECT_EQ(read(pipe[0], &end, 1), 0);
        close(pipe[0]);
    }
    ~World() {
        kill(victim, SIGKILL);
        waitpid(victim, nullptr, 0);
        for (const int each : {medium, inet, local})
            close(each);
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    template <class Address> static void Listen(int socket, Address* where, socklen_t size) {
        EXPECT_EQ(bind(socket, reinterpret_cast<sockaddr*>(where), size), 0);
        EXPECT_EQ(listen(socket, 8), 0);
    }
    [[nodiscard]] std::string New() const { return folder.Path("new"); }

    TemporaryFolder folder;
    std::string file;
    int medium = -1; ///< the file, opened before the box was shut
    int inet = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int local = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    sockaddr_un abstract{AF_UNIX, {}};
    pid_t victim = 0;
};

int Connect(int kind, const auto& address) {
    return Error(
        connect(socket(kind, SOCK_STREAM, 0), reinterpret_cast<const sockaddr*>(&address), sizeof address));
}

struct Act {
    const char* name;
    int error; ///< in the box
    int (*attempt)(const World&);
    int abi = 1; ///< of Landlock, from which on it is refused; 0: not by Landlock
};

// clang-format off
const Act kFileActs[] = {
    {"read a file of the user's", EACCES, [](const World& w) { return Error(open(w.file.c_str(), O_RDONLY)); }},
    {"list the user's folder",    EACCES, [](const World& w) { return opendir(w.folder.Path().c_str()) != nullptr ? 0 : errno; }},
    {"write to a file",           EACCES, [](const World& w) { return Error(open(w.file.c_str(), O_WRONLY)); }},
    {"write to the open medium",  EACCES, [](const World& w) { return Error(open(("/proc/self/fd/" + std::to_string(w.medium)).c_str(), O_WRONLY)); }},
    {"make a file",               EACCES, [](const World& w) { return Error(open(w.New().c_str(), O_WRONLY | O_CREAT, 0600)); }},
    {"make a folder",             EACCES, [](const World& w) { return Error(mkdir(w.New().c_str(), 0700)); }},
    {"make a link",               EACCES, [](const World& w) { return Error(symlink("/", w.New().c_str())); }},
    {"make a FIFO",               EACCES, [](const World& w) { return Error(mkfifo(w.New().c_str(), 0600)); }},
    {"rename a file",             EACCES, [](const World& w) { return Error(rename(w.file.c_str(), w.New().c_str())); }},
    {"take a file away",          EACCES, [](const World& w) { return Error(unlink(w.file.c_str())); }},
    {"cut a file",                EACCES, [](const World& w) { return Error(truncate(w.file.c_str(), 0)); }, 3},
    {"run a program",             EACCES, [](const World&) { return Error(execl("/bin/true", "true", nullptr)); }},
    {"connect by TCP",            EACCES, [](const World& w) { return Connect(AF_INET, w.address); }, 4},
    {"listen by TCP",             EACCES, [](const World&) {
        const sockaddr_in any{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
        return Error(bind(socket(AF_INET, SOCK_STREAM, 0), reinterpret_cast<const sockaddr*>(&any), sizeof any)); }, 4},
    {"connect by abstract name",  EPERM,  [](const World& w) { return Connect(AF_UNIX, w.abstract); }, 6},
    {"send a signal",             EPERM,  [](const World& w) { return Error(kill(w.victim, SIGCONT)); }, 6},
#ifndef __SANITIZE_ADDRESS__
    {"take much memory",          ENOMEM, [](const World&) {
        return mmap(nullptr, box::kMostMemory, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0) != MAP_FAILED ? 0 : errno; }, 0},
#endif
};

const Act kCallActs[] = {
    {"run a program",             ENOSYS, [](const World&) { return Error(execl("/bin/true", "true", nullptr)); }},
    {"make a process",            ENOSYS, [](const World&) {
        const long child = syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr);
        if (child == 0)
            _exit(0);
        return Error(child); }},
    {"make it the newer way",     ENOSYS, [](const World&) {
        std::uint64_t arguments[11] = {0, 0, 0, 0, SIGCHLD};
        const long child = syscall(SYS_clone3, arguments, sizeof arguments);
        if (child == 0)
            _exit(0);
        return Error(child); }},
    {"trace a process",           ENOSYS, [](const World& w) { return Error(ptrace(PTRACE_SEIZE, w.victim, nullptr, nullptr)); }},
    {"read a process's memory",   ENOSYS, [](const World& w) {
        char byte = 0;
        iovec here{&byte, 1};
        iovec there{const_cast<World*>(&w), 1};
        return Error(process_vm_readv(w.victim, &here, 1, &there, 1, 0)); }},
    {"send a signal",             ENOSYS, [](const World& w) { return Error(kill(w.victim, SIGCONT)); }},
    {"send it to a thread",       ENOSYS, [](const World& w) { return Error(syscall(SYS_tgkill, w.victim, w.victim, SIGCONT)); }},
    {"have a signal sent",        ENOSYS, [](const World& w) { return Error(fcntl(w.local, F_SETOWN, w.victim)); }},
    {"hold a process",            ENOSYS, [](const World& w) { return Error(syscall(SYS_pidfd_open, w.victim, 0)); }},
    {"slow a process down",       ENOSYS, [](const World& w) { return Error(setpriority(PRIO_PROCESS, w.victim, 19)); }},
    {"outlive the parent",        ENOSYS, [](const World&) { return Error(prctl(PR_SET_PDEATHSIG, 0)); }},
    {"change a limit",            ENOSYS, [](const World&) { const rlimit none{}; return Error(setrlimit(RLIMIT_CORE, &none)); }},
    {"leave a namespace",         ENOSYS, [](const World&) { return Error(unshare(CLONE_FS)); }},
    {"change rights",             ENOSYS, [](const World& w) { return Error(chmod(w.file.c_str(), 0600)); }},
    {"change times",              ENOSYS, [](const World& w) { return Error(utimensat(AT_FDCWD, w.file.c_str(), nullptr, 0)); }},
    {"make an inet socket",       ENOSYS, [](const World&) { return Error(socket(AF_INET, SOCK_STREAM, 0)); }},
    {"make a datagram socket",    ENOSYS, [](const World&) { return Error(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)); }},
    {"make a pair of them",       ENOSYS, [](const World&) { int ends[2]; return Error(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends)); }},
    {"listen",                    ENOSYS, [](const World& w) { return Error(listen(w.local, 1)); }},
    {"have a file signalled",     ENOSYS, [](const World& w) { int on = 1; return Error(ioctl(w.local, FIOASYNC, &on)); }},
};
// clang-format on

/// Each act in the box and, as its control, without it, with the rights of root and of an ordinary user.
void TryEach(const std::function<void()>& check) {
    check();
    const TemporaryFolder folder;
    RunAsOrdinaryUser(folder.Path(), check);
}

} // namespace

TEST(Box, RefusesFilesTheNetworkAndMemoryAsFarAsTheKernelGoes) {
    const int kernels = LandlockAbi();
    for (const Act& act : kFileActs)
        TryEach([&] {
            EXPECT_EQ(ErrorOf([&] { return act.attempt(World()); }), 0) << act.name << ", without the box";
            for (int abi = 1; abi <= kernels; ++abi) {
                const World world;
                const int error = ErrorOf([&] { return act.attempt(world); },
                                          [abi] { EXPECT_EQ(box::LimitFiles(abi), ""); });
                EXPECT_EQ(error, abi >= act.abi ? act.error : 0) << act.name << ", Landlock " << abi;
            }
        });
}

TEST(Box, RefusesCallsOfEveryThread) {
    for (const Act& act : kCallActs)
        TryEach([&] {
            const World world;
            const auto inThread = [&](const std::function<void()>& shut) {
                return ErrorOf([&] {
                    std::promise<void> isShut;
                    auto error = std::async(std::launch::async, [&] {
                        isShut.get_future().wait();
                        return act.attempt(world);
                    });
                    shut();
                    isShut.set_value();
                    return error.get();
                });
            };
            EXPECT_EQ(inThread([] {
                          prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
                          const box::CallLimits limits =
                              box::LimitCalls(box::Outputs("pipewire,pulse,alsa,null"));
                          EXPECT_EQ(limits.missing, "");
                          EXPECT_GE(limits.connects, 0);
                      }),
                      act.error)
                << act.name;
            EXPECT_EQ(inThread([] {}), 0) << act.name << ", without the box";
        });
}

TEST(Box, LeavesOpenWhatItsTableNamesAndMemoryThatIsWrittenAndRun) {
    EXPECT_EQ(ErrorOf([] {
                  EXPECT_EQ(box::LimitFiles(), "");
                  EXPECT_EQ(box::LimitCalls(box::Outputs("null")).connects, -1);
                  EXPECT_GE(open("/dev/null", O_RDWR), 0);
                  EXPECT_GE(open("/usr/lib", O_RDONLY | O_DIRECTORY), 0);
                  void* page =
                      mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
                  EXPECT_EQ(mprotect(page, 4096, PROT_READ | PROT_EXEC), 0);
                  EXPECT_EQ(kill(getpid(), 0), 0);
                  EXPECT_EQ(std::async(std::launch::async, [] { return 7; }).get(), 7);
                  EXPECT_EQ(Error(socket(AF_UNIX, SOCK_STREAM, 0)), ENOSYS) << "no output needs a server";
                  return ::testing::Test::HasFailure() ? 1 : 0;
              }),
              0);
}

TEST(Box, LeavesNoCoreDump) {
    const TemporaryFolder folder;
    const auto abortIn = [&](bool boxed) {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit all{RLIM_INFINITY, RLIM_INFINITY};
            if (chdir(folder.Path().c_str()) != 0 || setrlimit(RLIMIT_CORE, &all) != 0)
                _exit(1);
            if (boxed)
                box::LimitFiles();
            abort();
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    };
    EXPECT_EQ(WTERMSIG(abortIn(true)), SIGABRT);
    EXPECT_FALSE(WCOREDUMP(abortIn(true)));
    const int unboxed = abortIn(false);
    EXPECT_TRUE(!WIFSIGNALED(unboxed) || WCOREDUMP(unboxed)) << "unless the system lets nobody";
}

TEST(Box, SaysWhatTheKernelLacksAndGoesOnWithoutIt) {
    const World world;
    EXPECT_EQ(ErrorOf([&] {
                  TakeAway(SYS_landlock_create_ruleset);
                  EXPECT_EQ(box::LimitFiles(), "Landlock: Function not implemented");
                  EXPECT_GE(open(world.file.c_str(), O_RDONLY), 0);
                  TakeAway(SYS_seccomp);
                  const box::CallLimits limits = box::LimitCalls(box::Outputs("pulse"));
                  EXPECT_EQ(limits.missing, "seccomp: Function not implemented");
                  EXPECT_EQ(limits.connects, -1);
                  EXPECT_GE(socket(AF_INET, SOCK_STREAM, 0), 0);
                  return ::testing::Test::HasFailure() ? 1 : 0;
              }),
              0);
}

} // namespace kirolane::tests
