#pragma once

#include <functional>

namespace kirolane::posix {

/// Has SIGTERM and SIGINT end the process with status 0: `quit` is called on a thread of its own and asks for
/// the orderly end. Where that does not come within 0.7 s, or another signal does, the process ends
/// without it. A signal that is ignored stays so. To be called once.
void WatchQuitSignals(std::function<void()> quit);

} // namespace kirolane::posix
