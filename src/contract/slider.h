#pragma once

#include "contract/rectcontrol.h"

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
    /// False: a person's press and the value that it sets are told together, on release. Until then the value
    /// is the program's, and only the thumb on the screen is the person's.
    [[nodiscard]] bool LiveScroll() const { return Design().liveScroll; }

    std::function<void()> OnValueChanged;

    /// A person set the slider: holds the clamped value and fires ValueChanged if it differs.
    void ReportValue(std::int32_t value);
    /// The same for a press that has ended, of a slider without LiveScroll: fires MouseDown first, which may
    /// keep the press from the slider. Both in one delivery, so that no other event, and no write of the
    /// value by one, comes between a press and what it set.
    void ReportPressAndValue(std::int32_t x, std::int32_t y, std::int32_t value);

private:
    void TakeValue(std::int32_t value);

    std::int32_t m_value;
    std::int32_t m_maximum;
};

} // namespace kirolane
