#pragma once

#include "backends/mpv/media_file.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <chrono>
#include <cstdint>

namespace kirolane::mpv {

/// A file as libavformat reads it, and nothing else, whatever it says. After the deadline it has
/// nothing more: a single call of libavformat's may look for a packet through gigabytes.
class MediaInput {
public:
    /// Of one of the formats, libavformat's names, comma-separated.
    MediaInput(MediumPointer medium, const char* formats, std::chrono::milliseconds limit);
    ~MediaInput();
    MediaInput(const MediaInput&) = delete;
    MediaInput& operator=(const MediaInput&) = delete;

    /// Null if it could not be opened.
    [[nodiscard]] AVFormatContext* Context() const { return m_context; }
    [[nodiscard]] bool Expired() const { return std::chrono::steady_clock::now() >= m_deadline; }

private:
    static int Read(void* self, std::uint8_t* buffer, int size);
    static std::int64_t Seek(void* self, std::int64_t offset, int whence);

    const MediumPointer m_medium;
    std::int64_t m_position = 0;
    std::chrono::steady_clock::time_point m_deadline;
    AVIOContext* m_io = nullptr;
    AVFormatContext* m_context = nullptr;
};

/// The matrix that a stream's pictures are to be shown through, nine numbers; null for none.
const std::int32_t* DisplayMatrix(const AVStream& stream);

} // namespace kirolane::mpv
