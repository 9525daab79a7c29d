#pragma once

#include <string>

namespace kirolane {

/// An opaque handle of a media file, as FolderItem::OpenAsMovie gives it. It names the file; the player that
/// it is assigned to opens it. Two handles to one file play independently.
class Movie {
public:
    /// Absolute path as the system has it, bytes untouched.
    explicit Movie(std::string nativePath) : m_nativePath(std::move(nativePath)) {}
    [[nodiscard]] const std::string& NativePath() const { return m_nativePath; }

private:
    std::string m_nativePath;
};

} // namespace kirolane
