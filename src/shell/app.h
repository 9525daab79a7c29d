#pragma once

#include "platform/application.h"

namespace kirolane {

/// The application object.
class App : public Application {};

} // namespace kirolane
