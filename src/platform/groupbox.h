#pragma once

#include "platform/rectcontrol.h"

namespace kirolane {

/// A frame with a caption; design values only.
class GroupBox : public RectControl {
public:
    GroupBox(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::string_view Caption() const { return Design().text; }
};

} // namespace kirolane
