#include "backends/mpv/thread_niceness.h"

#ifdef __linux__
#include <sys/resource.h>
#endif

namespace kirolane::mpv {

void SetThreadNiceness([[maybe_unused]] int niceness) {
#ifdef __linux__
    if (niceness == 0)
        return;
    constexpr id_t thisThread = 0; // by number it could be anybody's, and an engine's box refuses that
    setpriority(PRIO_PROCESS, thisThread, getpriority(PRIO_PROCESS, thisThread) + niceness);
#endif
}

} // namespace kirolane::mpv
