#include "contract/control.h"

#include "contract/window.h"

namespace kirolane {

Control::Control(class Window& window, const ControlDesign& design)
    : m_window(window), m_design(design), m_name(design.name) {}

std::string Control::Path() const {
    return m_window.Name() + "." + m_name;
}

} // namespace kirolane
