#include "wire/medium.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace kirolane::wire {

namespace {

std::string CauseOf(int error) {
    return std::generic_category().message(error);
}

/// "" for a regular file.
std::string WhyNot(const struct stat& info) {
    if (S_ISREG(info.st_mode))
        return "";
    return S_ISDIR(info.st_mode) ? "is a folder" : "is not a regular file";
}

} // namespace

std::string AbsolutePath(const std::string& nativePath) {
    std::error_code error;
    return std::filesystem::absolute(nativePath, error).native();
}

std::shared_ptr<const Medium> Medium::Open(const std::string& nativePath, std::string& cause) {
    const std::string path = AbsolutePath(nativePath);
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) { // before it is opened, which some devices take for a command
        cause = CauseOf(errno);
        return nullptr;
    }
    if (cause = WhyNot(info); !cause.empty())
        return nullptr;
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.IsOpen()) {
        cause = CauseOf(errno);
        return nullptr;
    }
    return Adopt(std::move(file), path, cause);
}

std::shared_ptr<const Medium> Medium::Adopt(Descriptor file, const std::string& path, std::string& cause) {
    struct stat info {};
    if (fstat(file.Get(), &info) != 0) {
        cause = CauseOf(errno);
        return nullptr;
    }
    if (cause = WhyNot(info); !cause.empty())
        return nullptr;
    MediaFile state;
    state.path = path;
    state.device = info.st_dev;
    state.inode = info.st_ino;
    state.size = info.st_size;
    state.changed = static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
    return std::shared_ptr<const Medium>(new Medium(std::move(file), std::move(state)));
}

std::int64_t Medium::Read(void* buffer, std::size_t size, std::int64_t from) const {
    ssize_t count = 0;
    do
        count = pread(m_descriptor.Get(), buffer, size, from);
    while (count < 0 && errno == EINTR);
    return count;
}

} // namespace kirolane::wire
