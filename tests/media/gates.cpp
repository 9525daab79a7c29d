#include "gates.h"

#include <array>

#include <dlfcn.h>
#include <fcntl.h>
#include <mpv/render.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kirolane::tests {

Gate mediumGate;
Gate pictureGate;

void Gate::Close(const std::string& below) {
    const std::lock_guard lock(m_mutex);
    m_below = below;
    m_closed = true;
}

void Gate::Open() {
    std::unique_lock lock(m_mutex);
    m_closed = false;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_waiting == 0; });
}

int Gate::Waiting() {
    const std::lock_guard lock(m_mutex);
    return m_waiting;
}

void Gate::Pass(const std::string& path) {
    std::unique_lock lock(m_mutex);
    if (!m_closed || !path.starts_with(m_below))
        return;
    ++m_waiting;
    m_changed.wait(lock, [this] { return !m_closed; });
    --m_waiting;
    m_changed.notify_all();
}

} // namespace kirolane::tests

// The C library's own and libmpv's, which this program and the libraries call by these names.

extern "C" ssize_t read(int descriptor, void* buffer, size_t size) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    kirolane::tests::mediumGate.Pass({path.data(), length > 0 ? static_cast<size_t>(length) : 0});
    return ::syscall(SYS_read, descriptor, buffer, size);
}

extern "C" int stat(const char* path, struct stat* status) noexcept {
    kirolane::tests::mediumGate.Pass(path);
    return ::fstatat(AT_FDCWD, path, status, 0);
}

extern "C" int mpv_render_context_render(mpv_render_context* context, mpv_render_param* parameters) {
    static const auto render =
        reinterpret_cast<decltype(&mpv_render_context_render)>(dlsym(RTLD_NEXT, "mpv_render_context_render"));
    const int status = render(context, parameters);
    kirolane::tests::pictureGate.Pass();
    return status;
}
