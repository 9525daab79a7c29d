#pragma once

#include <cstdint>

namespace kirolane {

/// An RGB triple, each part 0 to 255.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

constexpr Color RGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return {red, green, blue};
}

inline constexpr Color kBlack = RGB(0x00, 0x00, 0x00);
inline constexpr Color kWhite = RGB(0xFF, 0xFF, 0xFF);
inline constexpr Color kRed = RGB(0xFF, 0x00, 0x00);
inline constexpr Color kGrey = RGB(0x80, 0x80, 0x80);
inline constexpr Color kFlat = RGB(0xB1, 0xB1, 0xB1); ///< the flat console, the preferences, the about window

} // namespace kirolane
