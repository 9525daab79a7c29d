#include "contract/updownarrows.h"

namespace kirolane {

UpDownArrows::UpDownArrows(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

void UpDownArrows::ReportUp() {
    Fire("Up", OnUp);
}

void UpDownArrows::ReportDown() {
    Fire("Down", OnDown);
}

} // namespace kirolane
