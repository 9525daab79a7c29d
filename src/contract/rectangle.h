#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A rectangle filled with its design colour. Hiding it does not hide its children: each has its own Visible.
class Rectangle : public RectControl {
public:
    Rectangle(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

    [[nodiscard]] Color FillColor() const { return Design().fillColor; }
};

} // namespace kirolane
