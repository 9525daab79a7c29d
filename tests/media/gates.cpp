#include "gates.h"

#include <filesystem>

#include <dlfcn.h>
#include <fcntl.h>
#include <mpv/render.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::tests {

Gate mediumGate;
Gate pictureGate;
std::atomic<int> networkCalls = 0;

} // namespace kirolane::tests

using namespace kirolane::tests;

// The C library's own and libmpv's, which this program and the libraries call by these names.

extern "C" ssize_t pread(int descriptor, void* buffer, size_t size, off_t from) {
    std::error_code none;
    mediumGate.Pass(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none));
    return ::syscall(SYS_pread64, descriptor, buffer, size, from);
}

extern "C" int stat(const char* path, struct stat* status) noexcept {
    mediumGate.Pass(path);
    return ::fstatat(AT_FDCWD, path, status, 0);
}

extern "C" int socket(int domain, int type, int protocol) noexcept {
    networkCalls += domain == AF_INET || domain == AF_INET6 ? 1 : 0;
    return static_cast<int>(::syscall(SYS_socket, domain, type, protocol));
}

extern "C" int mpv_render_context_render(mpv_render_context* context, mpv_render_param* parameters) {
    static const auto render =
        reinterpret_cast<decltype(&mpv_render_context_render)>(dlsym(RTLD_NEXT, "mpv_render_context_render"));
    const int status = render(context, parameters);
    pictureGate.Pass();
    return status;
}
