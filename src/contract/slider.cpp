#include "contract/slider.h"

#include "contract/core/runtime.h"

#include <algorithm>

namespace kirolane {

Slider::Slider(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value), m_maximum(design.maximum) {}

void Slider::SetValue(std::int32_t value) {
    m_value = std::clamp(value, Minimum(), m_maximum);
    Changed();
    if (OnValueChanged)
        OnValueChanged();
}

void Slider::SetMaximum(std::int32_t maximum) {
    m_maximum = std::max(maximum, Minimum());
    m_value = std::min(m_value, m_maximum);
    Changed();
}

void Slider::ReportValue(std::int32_t value) {
    if (!Enabled())
        return;
    Runtime::Current().Deliver(Window(), Path() + " ValueChanged", [this, value] { TakeValue(value); });
}

void Slider::ReportPressAndValue(std::int32_t x, std::int32_t y, std::int32_t value) {
    if (!Enabled())
        return;
    Runtime::Current().Deliver(Window(), Path() + " MouseDown", [this, x, y, value] {
        if (OnMouseDown && OnMouseDown(x, y))
            Changed();
        else
            TakeValue(value);
    });
}

void Slider::TakeValue(std::int32_t value) {
    const std::int32_t clamped = std::clamp(value, Minimum(), m_maximum);
    Changed(); // shows the value held, whatever the person's hand left on the screen
    if (clamped == m_value)
        return;
    m_value = clamped;
    if (OnValueChanged)
        OnValueChanged();
}

} // namespace kirolane
