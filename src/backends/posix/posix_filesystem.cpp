#include "backends/posix/posix_filesystem.h"

#include "backends/posix/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::posix {

namespace fs = std::filesystem;

namespace {

std::string Cause(int error) {
    return std::generic_category().message(error);
}

/// Why a thing of that mode is no text or media file, "" if it is one.
std::string CauseOfMode(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return {};
    case S_IFDIR:
        return "Is a directory";
    case S_IFIFO:
        return "Is a FIFO";
    case S_IFSOCK:
        return "Is a socket";
    default:
        return "Is a device";
    }
}

/// Opens a regular file. What is none is refused before it is opened, as the mere opening of a FIFO or a
/// device may wait or have an effect.
Descriptor OpenRegular(const std::string& path, int flags, std::string& cause) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0)
        cause = CauseOfMode(status.st_mode);
    else if (errno != ENOENT || (flags & O_CREAT) == 0)
        cause = Cause(errno);
    if (!cause.empty())
        return Descriptor(-1);
    Descriptor file(::open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    if (!file.IsOpen()) {
        cause = Cause(errno);
        return file;
    }
    // It may have become another thing in between.
    cause = ::fstat(file.Get(), &status) == 0 ? CauseOfMode(status.st_mode) : Cause(errno);
    return cause.empty() ? std::move(file) : Descriptor(-1);
}

class PosixTextSink : public TextSink {
public:
    PosixTextSink(Descriptor file, std::string path) : m_file(std::move(file)), m_path(std::move(path)) {}

    [[nodiscard]] const std::string& Path() const override { return m_path; }

    std::string Write(std::string_view content) override {
        const auto size = static_cast<off_t>(content.size());
#ifdef __linux__
        // Room for the new text before the old is touched: a full disk keeps the old.
        if (::fallocate(m_file.Get(), FALLOC_FL_KEEP_SIZE, 0, std::max<off_t>(size, 1)) != 0 &&
            (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
            return Cause(errno);
#endif
        for (off_t done = 0; done < size;) {
            const auto rest = content.substr(static_cast<std::size_t>(done));
            const ssize_t written = ::pwrite(m_file.Get(), rest.data(), rest.size(), done);
            if (written >= 0)
                done += written;
            else if (errno != EINTR)
                return Cause(errno);
        }
        if (::ftruncate(m_file.Get(), size) != 0 || ::fsync(m_file.Get()) != 0)
            return Cause(errno);
        return {};
    }

private:
    Descriptor m_file;
    std::string m_path;
};

} // namespace

std::string PosixFileSystem::Prepare() {
    for (const char* name : {"Library", "Library/Application Support"}) {
        std::string cause;
        if (!MakeFolder(InHome(name), cause))
            return InHome(name) + ": " + cause;
    }
    return {};
}

std::string PosixFileSystem::InHome(const std::string& name) const {
    return (m_home == "/" ? m_home : m_home + "/") + name;
}

FileKind PosixFileSystem::Kind(const std::string& path) const {
    std::error_code none;
    switch (fs::status(path, none).type()) {
    case fs::file_type::directory:
        return FileKind::Folder;
    case fs::file_type::regular:
        return FileKind::File;
    case fs::file_type::none: // it cannot be looked at
    case fs::file_type::not_found:
        return FileKind::Missing;
    default:
        return FileKind::Other;
    }
}

bool PosixFileSystem::ReadFolder(const std::string& path, const FolderVisitor& visit,
                                 std::string& cause) const {
    std::error_code error;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
        const std::string_view file(entry->path().native());
        std::error_code none; // what a link leads to may be gone
        visit(file.substr(file.rfind('/') + 1), entry->is_directory(none));
    }
    cause = error ? error.message() : "";
    return cause.empty();
}

bool PosixFileSystem::MakeFolder(const std::string& path, std::string& cause) {
    std::error_code error;
    fs::create_directory(path, error);
    cause = error ? error.message() : "";
    return cause.empty();
}

bool PosixFileSystem::ReadText(const std::string& path, std::string& content, std::string& cause) const {
    const Descriptor file = OpenRegular(path, O_RDONLY, cause);
    if (!file.IsOpen())
        return false;
    content.clear();
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t got = ::read(file.Get(), buffer, sizeof buffer);
        if (got == 0)
            return true;
        if (got > 0) {
            content.append(buffer, static_cast<std::size_t>(got));
        } else if (errno != EINTR) {
            cause = Cause(errno);
            content.clear();
            return false;
        }
    }
}

std::unique_ptr<TextSink> PosixFileSystem::OpenForWriting(const std::string& path, std::string& cause) {
    Descriptor file = OpenRegular(path, O_WRONLY | O_CREAT, cause);
    if (!file.IsOpen())
        return nullptr;
    return std::make_unique<PosixTextSink>(std::move(file), path);
}

bool PosixFileSystem::IsReadableFile(const std::string& path, std::string& cause) const {
    return OpenRegular(path, O_RDONLY, cause).IsOpen();
}

bool PosixFileSystem::IsReadableFolder(const std::string& path, std::string& cause) const {
    const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const bool reached = folder.IsOpen() && ::faccessat(folder.Get(), ".", X_OK, AT_EACCESS) == 0;
    cause = reached ? "" : Cause(errno);
    return reached;
}

} // namespace kirolane::posix
