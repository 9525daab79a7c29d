#pragma once

#include "contract/color.h"

#include <cstdint>

namespace kirolane {

/// The surface that a paint event is given: one cell of a list. Coordinates start at the cell's top left.
class Graphics {
public:
    virtual ~Graphics() = default;

    [[nodiscard]] virtual std::int32_t Width() const = 0;
    [[nodiscard]] virtual std::int32_t Height() const = 0;
    virtual void SetForeColor(Color color) = 0;
    virtual void FillRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
};

} // namespace kirolane
