#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

class CheckBox : public RectControl {
public:
    CheckBox(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::string_view Caption() const { return Design().text; }
    [[nodiscard]] bool Value() const { return m_value; }
    /// Fires Action before it returns, like a click, if the value differs.
    void SetValue(bool on);

    std::function<void()> OnAction;

    /// A click: turns the box over and fires Action. Nothing happens on a disabled box.
    void ReportClick();

private:
    bool m_value;
};

} // namespace kirolane
