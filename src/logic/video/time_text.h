#pragma once

#include <cstdint>
#include <string>

namespace kirolane {

/// Seconds as hours, minutes and seconds of two digits each, joined by the full-width colon: 3725 gives
/// "01：02：05". Hours wrap at 60, so that the text keeps its width.
std::string TimeText(std::int32_t seconds);

} // namespace kirolane
