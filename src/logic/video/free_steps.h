#pragma once

#include "contract/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kirolane {

/// The free seek steps that an operator can choose among. A settings line holds the row's number, 1 to 19.
struct FreeStep {
    std::int32_t row;
    std::string_view label;
    std::int32_t seconds;
};

// clang-format off
inline constexpr std::array<FreeStep, 19> kFreeSteps = {{
    { 1, "1分",      60}, { 2, "1分30秒",  90}, { 3, "2分",     120}, { 4, "2分30秒", 150},
    { 5, "3分",     180}, { 6, "3分30秒", 210}, { 7, "4分",     240}, { 8, "4分30秒", 270},
    { 9, "5分",     300}, {10, "5分30秒", 330}, {11, "6分",     360}, {12, "6分30秒", 390},
    {13, "7分",     420}, {14, "7分30秒", 450}, {15, "8分",     480}, {16, "8分30秒", 510},
    {17, "9分",     540}, {18, "9分30秒", 570}, {19, "10分",    600},
}};
// clang-format on

constexpr bool FreeStepsAreEven() {
    for (std::size_t i = 0; i < kFreeSteps.size(); ++i)
        if (kFreeSteps[i].row != static_cast<std::int32_t>(i) + 1 ||
            kFreeSteps[i].seconds != 30 * (kFreeSteps[i].row + 1))
            return false;
    return true;
}
static_assert(FreeStepsAreEven());

/// The step in seconds that a settings line's text chooses, 0 for any other text.
inline double FreeStepSeconds(std::string_view line) {
    for (const FreeStep& step : kFreeSteps)
        if (Equals(line, Str(step.row)))
            return step.seconds;
    return 0.0;
}

} // namespace kirolane
