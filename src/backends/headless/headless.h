#pragma once

#include "backends/headless/handclock.h"
#include "backends/headless/headless_media.h"
#include "backends/headless/headless_windows.h"

namespace kirolane::headless {

/// Clock, windows and media that belong together; a Runtime on them must go first.
struct Headless {
    HandClock clock;
    HeadlessWindows windows{clock};
    HeadlessMedia media{clock};
};

} // namespace kirolane::headless
