#pragma once

#include "support/gate.h"

#include <atomic>

namespace kirolane::tests {

extern Gate mediumGate;               ///< of reads of files and looks at them: a medium that stops answering
extern Gate pictureGate;              ///< of pictures that have been rendered
extern std::atomic<int> networkCalls; ///< sockets for the internet that have been asked for

} // namespace kirolane::tests
