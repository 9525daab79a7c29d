#pragma once

#include "backends/mpv/media_file.h"

#include <chrono>
#include <string>

namespace kirolane::mpv {

/// How long a file plays.
struct Length {
    double seconds = 0.0; ///< above 0
    bool exact = false;   ///< told by a container that knows, or measured to the last packet
    bool even = true;     ///< no jump of the file's clock before its end
};

/// True if `told`, the duration in seconds that the container gives (0 for none), is no guess. `format` is
/// libavformat's name of the container.
bool KnowsLength(const std::string& format, double told);

inline constexpr std::chrono::milliseconds kMeasureLimit{500};
/// Reads the packets for at most so long; after that the share read is extrapolated.
Length MeasureLength(const MediumPointer& medium, double told,
                     std::chrono::milliseconds limit = kMeasureLimit);

/// What a file that cannot be measured is taken for.
Length GuessLength(double told);

} // namespace kirolane::mpv
