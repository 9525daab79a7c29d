#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A pair of small arrows, one event a click.
class UpDownArrows : public RectControl {
public:
    UpDownArrows(class Window& window, const ControlDesign& design);

    std::function<void()> OnUp;
    std::function<void()> OnDown;

    void ReportUp();
    void ReportDown();
};

} // namespace kirolane
