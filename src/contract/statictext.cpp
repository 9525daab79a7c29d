#include "contract/statictext.h"

namespace kirolane {

StaticText::StaticText(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_text(design.text) {}

void StaticText::SetCaption(std::string text) {
    m_text = std::move(text);
    Changed();
}

} // namespace kirolane
