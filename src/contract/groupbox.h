#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A frame with a caption; design values only.
class GroupBox : public RectControl {
public:
    GroupBox(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

    [[nodiscard]] std::string_view Caption() const { return Design().text; }
};

} // namespace kirolane
