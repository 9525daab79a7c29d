#pragma once

#include <cstdint>

namespace kirolane {

/// The keyboard's state, apart from the events that it causes.
class Keyboard {
public:
    static constexpr std::int32_t kLeftArrow = 123;
    static constexpr std::int32_t kRightArrow = 124;

    /// True while the key of that code is held. Codes other than the two above are never held.
    static bool AsyncKeyDown(std::int32_t code);
};

} // namespace kirolane
