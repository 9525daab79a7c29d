#pragma once

#include "platform/rectcontrol.h"

namespace kirolane {

/// A slider of whole numbers.
class Slider : public RectControl {
public:
    Slider(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::int32_t Value() const { return m_value; }
    /// Clamped to Minimum and Maximum. Every write fires ValueChanged before it returns, equal ones too.
    void SetValue(std::int32_t value);
    [[nodiscard]] std::int32_t Minimum() const { return Design().minimum; }
    [[nodiscard]] std::int32_t Maximum() const { return m_maximum; }
    /// Below Minimum counts as Minimum. A Value above it comes down to it without an event.
    void SetMaximum(std::int32_t maximum);
    /// False: a person's drag changes the value on release only.
    [[nodiscard]] bool LiveScroll() const { return Design().liveScroll; }

    std::function<void()> OnValueChanged;

    /// A person set the slider: holds the clamped value and fires ValueChanged if it differs. A back end of a
    /// slider without LiveScroll reports on release only, a press beside the thumb included.
    void ReportValue(std::int32_t value);

private:
    std::int32_t m_value;
    std::int32_t m_maximum;
};

} // namespace kirolane
