#pragma once

#include <string>

namespace kirolane {

inline constexpr const char* kNoDriftText = "±0秒：Timing";

/// Text of a drift in seconds, to two decimals, cut and not rounded: 0.1234 gives "+0.12秒：Timing", 12.345
/// gives "+12.3秒：Timing". Below a hundredth it counts as none.
std::string DriftAheadText(float drift);
/// The same for a drift below 0: "-0.12秒：Timing".
std::string DriftBehindText(float drift);

} // namespace kirolane
