#pragma once

#include "contract/geometry.h"

#include <cstdint>

namespace kirolane {

/// Number of displays, read afresh at each call. Displays with the same rectangle (a mirrored projector)
/// count as one; there is always at least one.
std::int32_t ScreenCount();

/// A display, zero-based; Screen(0) is the main one. A snapshot of this moment: keep none across events.
class Screen {
public:
    /// Throws OutOfBoundsException for an index outside 0 to ScreenCount() - 1.
    explicit Screen(std::int32_t index);

    [[nodiscard]] std::int32_t Left() const { return m_rect.left; }
    [[nodiscard]] std::int32_t Top() const { return m_rect.top; }
    [[nodiscard]] std::int32_t Width() const { return m_rect.width; }
    [[nodiscard]] std::int32_t Height() const { return m_rect.height; }

private:
    Rect m_rect;
};

} // namespace kirolane
