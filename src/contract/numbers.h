#pragma once

#include <cstdint>

namespace kirolane {

/// Real to integer: drops the fraction, toward zero. Past the ends of the range it gives the end, for a value
/// that is no number 0.
constexpr std::int32_t ToInteger(double value) {
    if (value != value)
        return 0;
    if (value >= 2147483647.0)
        return INT32_MAX;
    if (value <= -2147483648.0)
        return INT32_MIN;
    return static_cast<std::int32_t>(value);
}

} // namespace kirolane
