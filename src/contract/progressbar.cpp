#include "contract/progressbar.h"

#include <algorithm>

namespace kirolane {

ProgressBar::ProgressBar(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value) {}

void ProgressBar::SetValue(std::int32_t value) {
    m_value = std::clamp(value, 0, Maximum());
    Changed();
}

} // namespace kirolane
