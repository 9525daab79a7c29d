#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kirolane {

enum class FileKind : std::uint8_t { Missing, File, Folder, Other };

/// Takes one item of a folder as the system lists it; the name is valid only within the call. Links count as
/// what they lead to.
using FolderVisitor = std::function<void(std::string_view name, bool isFolder)>;

/// A text file open for writing, not yet changed.
class TextSink {
public:
    virtual ~TextSink() = default;
    /// Writes all of content in one piece over the old, cuts to length, syncs. "" or the cause of a failure.
    virtual std::string Write(std::string_view content) = 0;
    /// Native path, for messages.
    [[nodiscard]] virtual const std::string& Path() const = 0;
};

/// The files back end, in native byte paths. Each call asks the system. Where `cause` is given, a failure
/// puts one phrase there ("No such file or directory"). What is const may be called on any thread.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Absolute, without a trailing "/".
    [[nodiscard]] virtual std::string ApplicationFolder() const = 0;
    [[nodiscard]] virtual std::string DesktopFolder() const = 0;

    [[nodiscard]] virtual FileKind Kind(const std::string& path) const = 0;
    /// In the system's order, unsorted, without "." and "..". False with a cause if it fails, perhaps after
    /// some items.
    virtual bool ReadFolder(const std::string& path, const FolderVisitor& visit,
                            std::string& cause) const = 0;
    virtual bool MakeFolder(const std::string& path, std::string& cause) = 0;
    /// False with a cause if the file cannot be read.
    virtual bool ReadText(const std::string& path, std::string& content, std::string& cause) const = 0;
    /// Null with a cause if the file cannot be written.
    virtual std::unique_ptr<TextSink> OpenForWriting(const std::string& path, std::string& cause) = 0;
    /// True for a regular file that may be read; never waits, a FIFO included.
    [[nodiscard]] virtual bool IsReadableFile(const std::string& path, std::string& cause) const = 0;
    /// True for a folder whose items may be listed and reached.
    [[nodiscard]] virtual bool IsReadableFolder(const std::string& path, std::string& cause) const = 0;
};

} // namespace kirolane
