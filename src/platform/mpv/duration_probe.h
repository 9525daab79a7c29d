#pragma once

#include "platform/mpv/media_file.h"

#include <string>

namespace kirolane::mpv {

struct Length {
    double seconds = 0.0; ///< above 0
    bool exact = false;   ///< told by a container that knows, or measured to the last packet
};

/// How long a file plays. `format` is libavformat's name of the container and `told` the duration that it
/// gives, 0 for none. Where that is a guess the packets are read, for at most half a second; after that the
/// share read is extrapolated.
Length LengthOf(const MediaFile& file, const std::string& format, double told);

} // namespace kirolane::mpv
