#pragma once

#include "logic/shell/app.h"

#include <memory>

namespace kirolane {

/// From the entry to the idle state: makes the application object, gives it its menu bar and touches the
/// console, whose Event_Open does the rest. To be run by Runtime::Start; a failure comes out as an exception.
/// Keep the result while the runtime lives.
[[nodiscard]] std::unique_ptr<App> StartKirolane();

} // namespace kirolane
