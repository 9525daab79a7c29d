#pragma once

#include "backends/mpv/media_file.h"

#include <chrono>
#include <cstdint>

namespace kirolane::mpv {

/// What reading a file's packets in order gave.
struct PacketScan {
    double headerSeconds =
        0.0;              ///< that the file states itself and that can be; the packets are then not read
    double seconds = 0.0; ///< of the longest stream as far as read
    std::int64_t bytesRead = 0;
    std::int64_t dataFrom = 0;  ///< where the first packet lies that plays: behind titles and covers
    bool jumps = false;         ///< the clock of a stream is set anew on the way
    bool complete = false;      ///< read to the end
    bool hasTimeStamps = false; ///< of the container's own
};

/// Reads for at most that long. Reads that one file and nothing else, whatever it says. All 0 if it
/// cannot be read.
PacketScan ScanPackets(const MediumPointer& medium, std::chrono::milliseconds limit);

} // namespace kirolane::mpv
