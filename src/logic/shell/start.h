#pragma once

#include "logic/shell/app.h"

#include <memory>
#include <string>

namespace kirolane {

/// From the entry to the idle state: makes the application object, gives it its menu bar and touches the
/// console, whose Event_Open does the rest. To be run by Runtime::Start; a failure comes out as an exception.
/// Keep the result while the runtime lives.
[[nodiscard]] std::unique_ptr<App> StartKirolane();

/// The settings file in use, as the system has its path. After the start.
[[nodiscard]] std::string SettingsFile();

} // namespace kirolane
