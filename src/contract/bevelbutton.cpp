#include "contract/bevelbutton.h"

namespace kirolane {

BevelButton::BevelButton(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_caption(design.text) {}

void BevelButton::SetCaption(std::string caption) {
    m_caption = std::move(caption);
    Changed();
}

void BevelButton::SetValue(bool pressed) {
    m_value = pressed;
    Changed();
}

void BevelButton::ReportClick() {
    if (Enabled())
        Fire("Action", OnAction);
}

} // namespace kirolane
