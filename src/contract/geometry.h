#pragma once

#include <cstdint>

namespace kirolane {

/// All lengths are logical pixels: the units in which windows, controls and screens agree with each other.
struct Point {
    std::int32_t left = 0;
    std::int32_t top = 0;

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    [[nodiscard]] constexpr bool Holds(Point point) const {
        return left <= point.left && point.left < left + width && top <= point.top &&
               point.top < top + height;
    }
    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

} // namespace kirolane
