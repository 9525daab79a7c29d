#pragma once

#include "backends/mpv/media_file.h"

#include <chrono>
#include <string>

namespace kirolane::mpv {

/// What is to be known of a movie's header before libmpv opens the file, or better than libmpv tells it.
struct MovieHeader {
    /// What makes the pictures upright where they are stored lying on their side, on their head or mirrored,
    /// as those of a telephone are: a chain of libavfilter's; "" for pictures that are to be shown as they
    /// are.
    std::string turn;
    /// An edit leaves out what comes before the beginning, and yet it is there to be decoded.
    bool leadIn = false;
    /// It has pictures, whether or not there is a decoder for them: newer versions of libmpv do not count
    /// those without one as a track.
    bool pictures = false;
    /// To the end of the longest track, which is true where the length of the whole lies: older versions of
    /// libavformat pass that one on. 0 where the tracks do not tell.
    double seconds = 0.0;
};

/// Reads the header alone, for at most that long. Of other files than movies nothing is said.
MovieHeader ReadMovieHeader(const MediumPointer& medium, std::chrono::milliseconds limit);

} // namespace kirolane::mpv
