#pragma once

#include <cstdint>
#include <memory>

namespace kirolane::mpv {

/// One reader's view of bytes that libmpv plays.
class ByteStream {
public:
    ByteStream() = default;
    virtual ~ByteStream() = default;
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    /// May wait. The number of bytes, 0 at the end, -1 if cancelled or failed.
    virtual std::int64_t Read(char* buffer, std::uint64_t size) = 0;
    /// -1 outside of them.
    virtual std::int64_t Seek(std::int64_t offset) = 0;
    [[nodiscard]] virtual std::int64_t Size() const = 0;
    /// Any thread: ends waits now and to come.
    virtual void Cancel() {}
};

/// What such streams are opened from, side by side.
class ByteSource {
public:
    ByteSource() = default;
    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    virtual std::unique_ptr<ByteStream> Open() = 0;
};

} // namespace kirolane::mpv
