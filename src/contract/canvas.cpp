#include "contract/canvas.h"

namespace kirolane {

Canvas::Canvas(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_backdrop(design.picture) {}

void Canvas::SetBackdrop(std::string picture) {
    m_backdrop = std::move(picture);
    Changed();
}

} // namespace kirolane
