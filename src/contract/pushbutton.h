#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A plain button; its caption is its design text.
class PushButton : public RectControl {
public:
    PushButton(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::string_view Caption() const { return Design().text; }

    std::function<void()> OnAction;

    /// A click. Nothing happens on a disabled button.
    void ReportClick();
};

} // namespace kirolane
