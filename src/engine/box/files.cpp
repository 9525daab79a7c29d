#include "engine/box/box.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::box {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

enum class Use : std::uint8_t {
    Read,
    Device,    ///< written to and asked (ioctl), too
    Sanitizer, ///< read, where there is one
};

struct FileRule {
    const char*
        path; ///< of a file, or of a folder with all that it holds; below the home folder without a "/"
    Use use;
};

// clang-format off
constexpr FileRule kFiles[] = {
    // Libraries that libraries load: ALSA's and PipeWire's modules.
    {"/usr/lib",                  Use::Read},
    {"/usr/lib64",                Use::Read},
    {"/usr/local/lib",            Use::Read},
    {"/etc/ld.so.cache",          Use::Read},
    // How to reach the sound servers and cards.
    {"/usr/share/alsa",           Use::Read},
    {"/etc/alsa",                 Use::Read},
    {"/etc/asound.conf",          Use::Read},
    {".asoundrc",                 Use::Read},
    {".config/alsa",              Use::Read},
    {"/etc/pulse",                Use::Read},
    {".config/pulse",             Use::Read},
    {".pulse",                    Use::Read},
    {".pulse-cookie",             Use::Read},
    {"/usr/share/pipewire",       Use::Read},
    {"/etc/pipewire",             Use::Read},
    {".config/pipewire",          Use::Read},
    {"/etc/machine-id",           Use::Read},
    {"/var/lib/dbus/machine-id",  Use::Read},
    {"/dev/snd",                  Use::Device},
    // SoundFonts.
    {"/usr/share/sounds",         Use::Read},
    {"/usr/share/soundfonts",     Use::Read},
    // The C library and what rests on it.
    {"/dev/null",                 Use::Device},
    {"/dev/urandom",              Use::Read},
    {"/sys/devices/system/cpu",   Use::Read},
    {"/proc",                     Use::Sanitizer},
};
// clang-format on

// What headers older than the kernel lack, by the number of the ABI that brought it.

struct RulesetAttributes {
    std::uint64_t files;
    std::uint64_t net;    ///< 4
    std::uint64_t scoped; ///< 6
};
constexpr std::uint64_t kRefer = 1ULL << 13;       ///< 2
constexpr std::uint64_t kTruncate = 1ULL << 14;    ///< 3
constexpr std::uint64_t kIoctlDevice = 1ULL << 15; ///< 5
constexpr std::uint64_t kNet = 0b11;               ///< TCP: bind, connect
constexpr std::uint64_t kScoped = 0b11;            ///< abstract sockets, signals

constexpr std::uint64_t kReading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kForFiles =
    LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE | kTruncate | kIoctlDevice;

RulesetAttributes AllOf(int abi) {
    RulesetAttributes all{};
    all.files = kRefer - 1;
    if (abi >= 2)
        all.files |= kRefer;
    if (abi >= 3)
        all.files |= kTruncate;
    if (abi >= 4)
        all.net = kNet;
    if (abi >= 5)
        all.files |= kIoctlDevice;
    if (abi >= 6)
        all.scoped = kScoped;
    return all;
}

std::string AbsolutePath(const char* path) {
    if (*path == '/')
        return path;
    const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): there is one thread
    return home != nullptr && *home == '/' ? std::string(home) + "/" + path : "";
}

/// A path that is not there needs no rule.
void Allow(int ruleset, const FileRule& rule, std::uint64_t handled) {
    if (rule.use == Use::Sanitizer && !kSanitized)
        return;
    const int file = open(AbsolutePath(rule.path).c_str(), O_PATH | O_CLOEXEC);
    if (file < 0)
        return;
    struct stat state {};
    std::uint64_t rights = kReading;
    if (rule.use == Use::Device)
        rights |= LANDLOCK_ACCESS_FS_WRITE_FILE | kIoctlDevice;
    if (fstat(file, &state) == 0 && !S_ISDIR(state.st_mode))
        rights &= kForFiles;
    const landlock_path_beneath_attr beneath{rights & handled, file};
    syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &beneath, 0);
    close(file);
}

/// Landlock holds the thread that asks for it and those that it makes later.
bool IsOnlyThread() {
    struct stat threads {};
    return stat("/proc/self/task", &threads) != 0 || threads.st_nlink == 3; // ".", ".." and this one
}

void Limit(decltype(RLIMIT_CORE) what, unsigned long long most) {
    rlimit limit{};
    if (getrlimit(what, &limit) != 0)
        return;
    limit.rlim_max = std::min<rlim_t>(limit.rlim_max, most);
    limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
    setrlimit(what, &limit);
}

std::string Cause() {
    return std::strerror(errno); // NOLINT(concurrency-mt-unsafe): there is one thread
}

} // namespace

std::string LimitFiles(int newestAbi) {
    // A dump to a file is refused by 0, too, but only 1 keeps the kernel from handing hundreds of megabytes
    // to a dump's collector before it lets anybody know that the process has ended.
    Limit(RLIMIT_CORE, 1);
    // Not the address space: the C library reserves much more of it than is ever used.
    if (!kSanitized)
        Limit(RLIMIT_DATA, kMostMemory);
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return "no_new_privs: " + Cause();
    if (!IsOnlyThread())
        return "Landlock: there are threads already";
    const auto kernels =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION));
    if (kernels < 1)
        return "Landlock: " + Cause();
    const RulesetAttributes handled = AllOf(std::min(kernels, newestAbi));
    const auto ruleset = static_cast<int>(syscall(SYS_landlock_create_ruleset, &handled, sizeof handled, 0));
    if (ruleset < 0)
        return "Landlock: " + Cause();
    for (const FileRule& rule : kFiles)
        Allow(ruleset, rule, handled.files);
    const bool stands = syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
    const std::string missing = stands ? "" : "Landlock: " + Cause();
    close(ruleset);
    return missing;
}

} // namespace kirolane::box
