#pragma once

#include "wire/descriptor.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kirolane::wire {

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

/// A regular file, opened for reading once, by whoever may. Reads say where, so that many can read side by
/// side, in several processes, too.
class Medium {
public:
    /// Never waits at a FIFO or a device. Null with a cause unless it is a regular file that may be read.
    static std::shared_ptr<const Medium> Open(const std::string& nativePath, std::string& cause);
    /// One that another process has opened. Null with a cause if it is not a regular file.
    static std::shared_ptr<const Medium> Adopt(Descriptor file, const std::string& path, std::string& cause);

    [[nodiscard]] const MediaFile& File() const { return m_file; }
    [[nodiscard]] int Get() const { return m_descriptor.Get(); }
    /// The number of bytes read, 0 at the end, below 0 for a failure.
    std::int64_t Read(void* buffer, std::size_t size, std::int64_t from) const;

private:
    Medium(Descriptor descriptor, MediaFile file)
        : m_descriptor(std::move(descriptor)), m_file(std::move(file)) {}

    Descriptor m_descriptor;
    MediaFile m_file;
};

} // namespace kirolane::wire
