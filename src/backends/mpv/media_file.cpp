#include "backends/mpv/media_file.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::mpv {

std::string AbsolutePath(const std::string& nativePath) {
    std::error_code error;
    return std::filesystem::absolute(nativePath, error).native();
}

std::optional<MediaFile> LookAt(const std::string& nativePath, std::string& cause) {
    MediaFile file;
    std::error_code error;
    file.path = std::filesystem::absolute(nativePath, error).native();
    struct stat info {};
    if (error || stat(file.path.c_str(), &info) != 0) {
        cause = error ? error.message() : std::generic_category().message(errno);
        return std::nullopt;
    }
    if (!S_ISREG(info.st_mode)) {
        cause = S_ISDIR(info.st_mode) ? "is a folder" : "is not a regular file";
        return std::nullopt;
    }
    if (access(file.path.c_str(), R_OK) != 0) {
        cause = std::generic_category().message(errno);
        return std::nullopt;
    }
    file.device = info.st_dev;
    file.inode = info.st_ino;
    file.size = info.st_size;
    file.changed = static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
    return file;
}

int OpenRegular(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info {};
    if (file < 0 || (fstat(file, &info) == 0 && S_ISREG(info.st_mode)))
        return file;
    close(file);
    return -1;
}

} // namespace kirolane::mpv
