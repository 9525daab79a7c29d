#include "backends/mpv/thread_niceness.h"

#ifdef __linux__
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace kirolane::mpv {

void SetThreadNiceness([[maybe_unused]] int niceness) {
#ifdef __linux__
    if (niceness == 0)
        return;
    const auto thread = static_cast<id_t>(syscall(SYS_gettid));
    setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + niceness);
#endif
}

} // namespace kirolane::mpv
