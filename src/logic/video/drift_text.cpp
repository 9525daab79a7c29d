#include "logic/video/drift_text.h"

#include "contract/text.h"

#include <cstdint>

namespace kirolane {

namespace {

constexpr std::int32_t kShown = 4; ///< characters of the number, without a sign
constexpr const char* kUnit = "秒：Timing";

/// Str leaves out a trailing zero: an exact tenth, "0.1" to "0.9", is one character short.
bool IsBareTenth(const std::string& number) {
    for (std::int32_t tenth = 1; tenth <= 9; ++tenth)
        if (Equals(number, "0." + Str(tenth)))
            return true;
    return false;
}

} // namespace

std::string DriftAheadText(float drift) {
    const std::string s = Left(Str(drift), kShown);
    if (Equals(s, "0.00"))
        return kNoDriftText;
    return "+" + s + (IsBareTenth(s) ? "0" : "") + kUnit;
}

std::string DriftBehindText(float drift) {
    const std::string s = Left(Str(drift), kShown + 1);
    if (Equals(s, "-0.00"))
        return kNoDriftText;
    return s + (IsBareTenth(Mid(s, 2)) ? "0" : "") + kUnit;
}

} // namespace kirolane
