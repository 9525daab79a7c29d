#include "stalled_medium.h"

#include <condition_variable>
#include <mutex>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::tests {

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
std::string g_folder;
bool g_stalled = false;
int g_waiting = 0;

void Pass(const std::string& path) {
    std::unique_lock lock(g_mutex);
    if (!g_stalled || !path.starts_with(g_folder))
        return;
    ++g_waiting;
    g_changed.wait(lock, [] { return !g_stalled; });
    --g_waiting;
    g_changed.notify_all();
}

} // namespace

StalledMedium::StalledMedium(const std::string& folder) {
    const std::lock_guard lock(g_mutex);
    g_folder = folder;
}

StalledMedium::~StalledMedium() {
    std::unique_lock lock(g_mutex);
    g_stalled = false;
    g_changed.notify_all();
    g_changed.wait(lock, [] { return g_waiting == 0; });
}

void StalledMedium::Stall() {
    const std::lock_guard lock(g_mutex);
    g_stalled = true;
}

int StalledMedium::Waiting() const {
    const std::lock_guard lock(g_mutex);
    return g_waiting;
}

} // namespace kirolane::tests

// The C library's own, which the libraries of this program call by these names.

extern "C" ssize_t read(int descriptor, void* buffer, size_t size) {
    char path[4096];
    const ssize_t length =
        ::readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path, sizeof path);
    kirolane::tests::Pass(std::string(path, length > 0 ? static_cast<size_t>(length) : 0));
    return ::syscall(SYS_read, descriptor, buffer, size);
}

extern "C" int stat(const char* path, struct stat* status) noexcept {
    kirolane::tests::Pass(path);
    return ::fstatat(AT_FDCWD, path, status, 0);
}
