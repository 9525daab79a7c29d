#include "contract/canvas.h"

namespace kirolane {

Canvas::Canvas(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_backdrop(design.picture) {}

} // namespace kirolane
