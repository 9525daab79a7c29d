#pragma once

#include <cstdint>
#include <vector>

#include <linux/filter.h>

namespace kirolane::box {

/// What half an argument must be for a row to hold, under the mask. None if the mask is 0.
struct Condition {
    std::uint8_t argument = 0; ///< from 0
    std::uint32_t mask = 0;
    std::uint32_t value = 0;
    bool upper = false; ///< which half: the kernel itself looks at no more than the lower one of an int
};

inline constexpr std::uint32_t kWhole = 0xffffffff; ///< a mask

enum class Answer : std::uint8_t {
    Allow,
    Ask, ///< whoever holds the listener answers
};

struct CallRule {
    long number;
    Condition first = {};
    Condition second = {};
    Answer answer = Answer::Allow;
};

/// A seccomp program: the first row that holds for a call gives the answer. What no row holds for fails with
/// ENOSYS, as on an older kernel: libraries then know another way. A call by the numbers of another
/// architecture ends the process.
std::vector<sock_filter> MakeFilter(const std::vector<CallRule>& rules, std::uint32_t architecture);

} // namespace kirolane::box
