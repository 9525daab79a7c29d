#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kirolane {

struct RateRow {
    std::int32_t value; ///< of the slider
    double factor;
    std::string_view caption;
};

// clang-format off
/// The speeds of both transports. Above normal they are uneven, and no formula gives them.
inline constexpr std::array<RateRow, 11> kRates = {{
    { 0, 0.75, "Rate：−５"},
    { 1, 0.8,  "Rate：−４"},
    { 2, 0.85, "Rate：−３"},
    { 3, 0.9,  "Rate：−２"},
    { 4, 0.95, "Rate：−１"},
    { 5, 1.0,  "Rate： ±０"}, // one blank wider than the design's
    { 6, 1.05, "Rate：＋１"},
    { 7, 1.1,  "Rate：＋２"},
    { 8, 1.2,  "Rate：＋３"},
    { 9, 1.24, "Rate：＋４"},
    {10, 1.35, "Rate：＋５"},
}};
// clang-format on

inline constexpr std::int32_t kSlowest = kRates.front().value;
inline constexpr std::int32_t kFastest = kRates.back().value;

/// The row of a slider's value, null for a value outside.
constexpr const RateRow* FindRate(std::int32_t value) {
    for (const RateRow& row : kRates)
        if (row.value == value)
            return &row;
    return nullptr;
}

} // namespace kirolane
