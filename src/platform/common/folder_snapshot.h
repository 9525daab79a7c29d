#pragma once

#include "platform/backend/filesystem.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane {

/// One reading of a folder: its items in the order of CompareNames, companion files "._name" left out.
class FolderSnapshot {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Reads now; may be called on a worker. Empty with a cause if the folder cannot be read.
    static FolderSnapshot Read(const FileSystem& files, std::string nativePath, std::string& cause);

    [[nodiscard]] const std::string& NativePath() const { return m_nativePath; }
    [[nodiscard]] const std::string& ColonPath() const { return m_colonPath; }
    [[nodiscard]] const std::vector<FolderEntry>& Entries() const { return m_entries; }
    /// Index of the entry of that name, kNone if there is none. Constant time when asked in order.
    [[nodiscard]] std::size_t Find(std::string_view name) const;

private:
    std::string m_nativePath;
    std::string m_colonPath;
    std::vector<FolderEntry> m_entries;
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

/// The native path that GetFolderItem's `path` leads to, or "" with a cause where that is nil. Any thread.
std::string ResolveFolderPath(const FileSystem& files, const std::string& path, std::string& cause);

} // namespace kirolane
