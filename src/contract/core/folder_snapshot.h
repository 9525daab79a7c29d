#pragma once

#include "contract/backend/filesystem.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane {

/// One reading of a folder: its items in the order of CompareNames, companion files "._name" left out. All
/// names lie in one piece, as a folder may hold a hundred thousand.
class FolderSnapshot {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Reads now; may be called on a worker. Empty with a cause if the folder cannot be read.
    static FolderSnapshot Read(const FileSystem& files, std::string nativePath, std::string& cause);

    [[nodiscard]] const std::string& NativePath() const { return m_nativePath; }
    [[nodiscard]] const std::string& ColonPath() const { return m_colonPath; }
    /// False where the folder could not be read.
    [[nodiscard]] bool WasRead() const { return m_wasRead; }

    [[nodiscard]] std::size_t Count() const { return m_entries.size(); }
    /// As the system has it. Valid as long as the snapshot.
    [[nodiscard]] std::string_view Name(std::size_t index) const { return Name(m_entries[index]); }
    [[nodiscard]] bool IsFolder(std::size_t index) const { return m_entries[index].isFolder; }
    /// Index of the entry of that name, kNone if there is none. Constant time when asked in order.
    [[nodiscard]] std::size_t Find(std::string_view name) const;

private:
    struct Entry {
        std::size_t offset;
        std::uint32_t length;
        bool isFolder;
    };

    [[nodiscard]] std::string_view Name(const Entry& entry) const {
        return {m_names.data() + entry.offset, entry.length};
    }

    std::string m_nativePath;
    std::string m_colonPath;
    std::string m_names;
    std::vector<Entry> m_entries;
    bool m_wasRead = false;
    mutable std::size_t m_lastFound = kNone;
};

/// The time during which GetFolderItem answers from a snapshot: the life of this object, not of the snapshot,
/// which every FolderItem made from it keeps.
class FolderScope {
public:
    explicit FolderScope(std::shared_ptr<const FolderSnapshot> snapshot) : m_snapshot(std::move(snapshot)) {}
    [[nodiscard]] const std::shared_ptr<const FolderSnapshot>& Snapshot() const { return m_snapshot; }

private:
    std::shared_ptr<const FolderSnapshot> m_snapshot;
};

/// The native path that GetFolderItem's `path` leads to, or "" with a cause where that is nil. Any thread
/// that `isFolder` may be called on.
std::string ResolveFolderPath(const std::string& path, const std::string& applicationFolder,
                              const std::function<bool(const std::string&)>& isFolder, std::string& cause);

} // namespace kirolane
