#pragma once

#include "contract/rectcontrol.h"

#include <string>

namespace kirolane {

/// Shows a picture in its rectangle, unscaled, from the top left.
class Canvas : public RectControl {
public:
    Canvas(class Window& window, const ControlDesign& design);

    /// Name of one of the program's pictures ("Kirologo"), "" for none.
    [[nodiscard]] const std::string& Backdrop() const { return m_backdrop; }

private:
    std::string m_backdrop;
};

} // namespace kirolane
