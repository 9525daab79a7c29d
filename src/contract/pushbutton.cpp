#include "contract/pushbutton.h"

namespace kirolane {

PushButton::PushButton(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

void PushButton::ReportClick() {
    if (Enabled())
        Fire("Action", OnAction);
}

} // namespace kirolane
