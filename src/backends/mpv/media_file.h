#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kirolane::mpv {

/// A file and its state at a moment; equal if nothing has been changed in between.
struct MediaFile {
    std::string path; ///< absolute, native
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t changed = 0; ///< nanoseconds

    friend bool operator==(const MediaFile&, const MediaFile&) = default;
};

/// As MediaFile has it; "" where there is none.
std::string AbsolutePath(const std::string& nativePath);

/// Looks at a file without opening it, which would wait at a FIFO. Empty with a cause unless it is a regular
/// file that may be read.
std::optional<MediaFile> LookAt(const std::string& nativePath, std::string& cause);
/// Opens it for reading if it is a regular file, without waiting for what is none. A descriptor, or -1.
int OpenRegular(const std::string& path);

} // namespace kirolane::mpv
