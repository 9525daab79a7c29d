#include "contract/editfield.h"

namespace kirolane {

EditField::EditField(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_text(design.text) {}

void EditField::SetText(std::string text) {
    m_text = std::move(text);
    Changed();
}

void EditField::ReportText(std::string text) {
    if (Enabled())
        m_text = std::move(text);
}

} // namespace kirolane
