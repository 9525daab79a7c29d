#include "contract/checkbox.h"

#include "contract/core/runtime.h"

namespace kirolane {

CheckBox::CheckBox(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value != 0) {}

void CheckBox::SetValue(bool on) {
    if (on == m_value)
        return;
    m_value = on;
    Changed();
    if (OnAction)
        OnAction();
}

void CheckBox::ReportClick() {
    if (Enabled())
        Runtime::Current().Deliver(Window(), Path() + " Action", [this] { SetValue(!m_value); });
}

} // namespace kirolane
