#pragma once

#include <chrono>
#include <string>

namespace kirolane::mpv {

/// What makes a movie's pictures upright where its header says that they lie on their side, on their head or
/// mirrored, as those of a telephone do: a chain of libavfilter's; "" for pictures that are to be shown as
/// they are stored. Reads the header alone, for at most that long.
std::string PictureTurn(const std::string& path, std::chrono::milliseconds limit);

} // namespace kirolane::mpv
