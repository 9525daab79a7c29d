#pragma once

#include "contract/application.h"

namespace kirolane {

class App : public Application {};

} // namespace kirolane
