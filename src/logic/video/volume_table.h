#pragma once

#include "contract/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kirolane {

// clang-format off
/// Player volume, 0 to 256, of each level from 0 to 100; both transports. No rule gives it: level 74 dips.
inline constexpr std::array<std::int32_t, 101> kPlayerVolumes = {
    //  +0   +1   +2   +3   +4   +5   +6   +7   +8   +9
         0,   2,   4,   8,  10,  13,  16,  19,  22,  24, //  0
        27,  30,  32,  34,  36,  38,  40,  42,  45,  48, // 10
        50,  52,  55,  58,  61,  64,  68,  70,  73,  76, // 20
        80,  82,  85,  88,  90,  92,  94,  96,  98, 100, // 30
       102, 105, 107, 110, 113, 116, 119, 121, 124, 126, // 40
       128, 130, 133, 136, 139, 141, 143, 146, 149, 152, // 50
       155, 157, 160, 162, 165, 167, 170, 172, 175, 177, // 60
       180, 182, 185, 188, 160, 192, 194, 197, 200, 202, // 70
       205, 208, 211, 214, 217, 220, 222, 225, 227, 230, // 80
       232, 235, 237, 240, 243, 246, 248, 250, 252, 254, // 90
       256,
};
// clang-format on

inline constexpr std::int32_t kLoudest = 100; ///< the highest level

constexpr bool IsLevel(std::int32_t level) {
    return level >= 0 && level <= kLoudest;
}

/// Player volume of a level, which must be one.
constexpr std::int32_t PlayerVolume(std::int32_t level) {
    return kPlayerVolumes[static_cast<std::size_t>(level)];
}

/// "Volume：   5", "Volume：  34", "Volume：100": the last is one column narrower than the others.
inline std::string VolumeText(std::int32_t level) {
    const char* blanks = level >= 100 ? "" : level >= 10 ? "  " : "   ";
    return "Volume：" + std::string(blanks) + Str(level);
}

} // namespace kirolane
