#pragma once

#include "contract/movie.h"
#include "contract/ref.h"
#include "contract/textinputstream.h"
#include "contract/textoutputstream.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kirolane {

class FolderSnapshot;

/// A file or folder, whether or not it exists. Names are bytes. Paths are in colon form: the volume of "/" is
/// "Root", folders are joined by ":", a folder's path ends in ":", and a ":" within a name stands as "/".
class FolderItem {
public:
    /// The absolute path as the system has it ("/a/b"), bytes untouched.
    explicit FolderItem(std::string nativePath);
    /// Item `index` (zero-based) of a folder that has been read.
    FolderItem(std::shared_ptr<const FolderSnapshot> snapshot, std::size_t index);
    /// The folder itself that has been read.
    explicit FolderItem(std::shared_ptr<const FolderSnapshot> snapshot);

    [[nodiscard]] std::string AbsolutePath() const;
    [[nodiscard]] std::string Name() const;
    [[nodiscard]] std::string NativePath() const;
    [[nodiscard]] bool Directory() const;

    /// Number of items. Companion files "._name" are none; other names with a leading point are.
    [[nodiscard]] std::int32_t Count() const;
    /// One-based, in the order of CompareNames; nil outside. Constant time after the first call.
    [[nodiscard]] Ref<FolderItem> Item(std::int32_t index) const;
    /// The item of that name, whether or not it exists. Nil if this is known not to be a folder.
    [[nodiscard]] Ref<FolderItem> Child(std::string_view name) const;

    /// Makes the folder. A failure is remembered (Failures::NoteFile) and not raised; a folder that is
    /// there already is left as it is.
    void CreateAsFolder() const;
    /// Nil if the file cannot be read.
    [[nodiscard]] Ref<TextInputStream> OpenAsTextFile() const;
    /// Nil if the file cannot be written. The old content stays until the stream's Close.
    [[nodiscard]] Ref<TextOutputStream> CreateTextFile() const;
    /// Nil unless it is a readable regular file. Whether it can be played shows when it is assigned.
    [[nodiscard]] Ref<Movie> OpenAsMovie() const;

private:
    [[nodiscard]] const FolderSnapshot& Contents() const;

    std::string m_nativePath;                                 ///< empty where a snapshot answers
    std::shared_ptr<const FolderSnapshot> m_snapshot;         ///< of the folder that the item stands in
    std::size_t m_index;                                      ///< in m_snapshot
    mutable std::shared_ptr<const FolderSnapshot> m_contents; ///< read by the first Count or Item
};

/// Nil when a parent folder on the path does not exist, or when the path ends in ":" and names no folder; the
/// item itself need not exist. "" gives the folder in which the application lies. A path of another form
/// counts as relative to that folder. While a FolderReading is alive, its folder answers from what was read.
Ref<FolderItem> GetFolderItem(std::string_view path);

/// The user's desktop folder: "Desktop" in the home folder under that very name in every language.
Ref<FolderItem> DesktopFolder();

/// The folder dialog, modal; nil if cancelled. What the handler ordered so far is shown first. While it is
/// up, threads run, and no event or tick reaches the logic.
Ref<FolderItem> SelectFolder();

} // namespace kirolane
