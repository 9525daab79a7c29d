#pragma once

#include "contract/control.h"

#include <memory>

namespace kirolane {

/// The control that a design row describes.
std::shared_ptr<Control> MakeControl(class Window& window, const ControlDesign& design);

} // namespace kirolane
