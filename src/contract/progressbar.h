#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A display bar that the logic drives; it fills from the bottom where it is higher than wide.
class ProgressBar : public RectControl {
public:
    ProgressBar(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::int32_t Value() const { return m_value; }
    /// Clamped to 0 and Maximum. Fires nothing.
    void SetValue(std::int32_t value);
    [[nodiscard]] std::int32_t Maximum() const { return Design().maximum; }

private:
    std::int32_t m_value;
};

} // namespace kirolane
