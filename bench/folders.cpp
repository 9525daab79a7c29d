#include "folders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::bench {

MemoryFolder::MemoryFolder() {
    char path[] = "/dev/shm/kirolane-bench-XXXXXX";
    if (::mkdtemp(path) == nullptr)
        throw std::runtime_error("no folder in memory can be made");
    m_path = path;
}

MemoryFolder::~MemoryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

namespace {
/// Makes empty files; nameOf(i) names the i-th.
template <class NameOf> void MakeEmpty(const std::string& folder, int count, NameOf nameOf) {
    std::filesystem::create_directory(folder);
    const int at = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < count; ++i) {
        const int fd = ::openat(at, nameOf(i).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        if (fd < 0)
            throw std::runtime_error("the files of the measurement cannot be made");
        ::close(fd);
    }
    ::close(at);
}
} // namespace

std::string MemoryFolder::MakeFiles(const std::string& name, int count) const {
    const std::string folder = m_path + "/" + name;
    MakeEmpty(folder, count, [](int i) {
        return i % 2 == 0 ? "Clip " + std::to_string(i) + ".mov" : "Notes " + std::to_string(i) + ".txt";
    });
    return folder;
}

std::string MemoryFolder::MakeMovies(const std::string& name, int count, const std::string& clip) const {
    const std::string folder = m_path + "/" + name;
    MakeEmpty(folder, count - 1, [](int i) { return "Clip " + std::to_string(i + 1) + ".mp4"; });
    std::filesystem::copy_file(clip, folder + "/Clip 0.mp4");
    return folder;
}

std::string ColonPath(std::string nativePath) {
    std::replace(nativePath.begin(), nativePath.end(), '/', ':');
    return "Root" + nativePath + ":";
}

std::vector<std::string> BareReading(const std::string& folder) {
    std::vector<std::string> names;
    DIR* dir = ::opendir(folder.c_str());
    while (const dirent* entry = ::readdir(dir)) {
        struct stat status {};
        if (::fstatat(::dirfd(dir), entry->d_name, &status, 0) == 0 && !S_ISDIR(status.st_mode))
            names.emplace_back(entry->d_name);
    }
    ::closedir(dir);
    return names;
}

} // namespace kirolane::bench
