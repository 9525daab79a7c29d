#include "backends/mpv/scale_down.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace kirolane::mpv {

namespace {

/// Of each of the four bytes, rounded down.
constexpr std::uint32_t Mean(std::uint32_t a, std::uint32_t b) {
    return (a & b) + (((a ^ b) & 0xFEFEFEFEU) >> 1U);
}

/// The former of the two source pixels about the middle of a pixel, of `count` that show `length` of them.
constexpr std::int64_t Before(std::int64_t pixel, std::int64_t count, std::int64_t length) {
    return (2 * pixel + 1) * length / (2 * count) - 1;
}

} // namespace

bool IsFarSmaller(std::int32_t width, std::int32_t height, const FrameView& picture) {
    return width > 0 && height > 0 && picture.width / 2 > width && picture.height / 2 > height;
}

void ScaleDown(const FrameView& picture, std::uint8_t* to, const FrameView& layout) {
    const std::uint64_t step =
        (static_cast<std::uint64_t>(picture.width) << 32U) / static_cast<std::uint64_t>(layout.width);
    for (std::int32_t y = 0; y < layout.height; ++y) {
        const auto* upper = reinterpret_cast<const std::uint32_t*>(
            picture.pixels + Before(y, layout.height, picture.height) * picture.stride);
        const auto* lower = upper + picture.stride / 4;
        auto* row = reinterpret_cast<std::uint32_t*>(to + static_cast<std::ptrdiff_t>(y) * layout.stride);
        std::uint64_t middle = step / 2;
        for (std::int32_t x = 0; x < layout.width; ++x, middle += step) {
            const std::size_t before = (middle >> 32U) - 1;
            row[x] = Mean(Mean(upper[before], upper[before + 1]), Mean(lower[before], lower[before + 1]));
        }
    }
}

void Stretch(const FrameView& picture, std::uint8_t* to, const FrameView& layout) {
    if (picture.width == layout.width && picture.height == layout.height) {
        for (std::int32_t y = 0; y < layout.height; ++y)
            std::memcpy(to + static_cast<std::ptrdiff_t>(y) * layout.stride,
                        picture.pixels + static_cast<std::ptrdiff_t>(y) * picture.stride,
                        static_cast<std::size_t>(layout.width) * 4);
        return;
    }
    struct Pair {
        std::int64_t before;
        std::int64_t after;
    };
    const auto pair = [](std::int64_t pixel, std::int64_t count, std::int64_t length) {
        const std::int64_t before = Before(pixel, count, length);
        return Pair{std::max<std::int64_t>(before, 0), std::min(before + 1, length - 1)};
    };
    std::vector<Pair> columns;
    for (std::int32_t x = 0; x < layout.width; ++x)
        columns.push_back(pair(x, layout.width, picture.width));
    for (std::int32_t y = 0; y < layout.height; ++y) {
        const auto [above, below] = pair(y, layout.height, picture.height);
        const auto* upper = reinterpret_cast<const std::uint32_t*>(picture.pixels + above * picture.stride);
        const auto* lower = reinterpret_cast<const std::uint32_t*>(picture.pixels + below * picture.stride);
        auto* row = reinterpret_cast<std::uint32_t*>(to + static_cast<std::ptrdiff_t>(y) * layout.stride);
        for (std::int32_t x = 0; x < layout.width; ++x) {
            const auto [left, right] = columns[static_cast<std::size_t>(x)];
            row[x] = Mean(Mean(upper[left], upper[right]), Mean(lower[left], lower[right]));
        }
    }
}

} // namespace kirolane::mpv
