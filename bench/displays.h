#pragma once

#include <cstdint>
#include <string>

namespace kirolane::bench {

enum class Displays : std::uint8_t {
    Offscreen, ///< two of 1920 x 1080, seen by nobody
    Desktop,   ///< those of the X display that DISPLAY names
};

/// Makes ready what a window needs on those displays, before QApplication; files that describe them go into
/// `folder`.
void Use(Displays displays, const std::string& folder);

} // namespace kirolane::bench
