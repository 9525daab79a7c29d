#pragma once

#include "contract/application.h"

namespace kirolane {

/// The application object.
class App : public Application {};

} // namespace kirolane
