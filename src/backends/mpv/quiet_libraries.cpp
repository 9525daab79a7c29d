#include "backends/mpv/quiet_libraries.h"

extern "C" {
#include <libavutil/log.h>
}
#include <fluidsynth.h>

#include <cstdlib>
#include <dlfcn.h>

namespace kirolane::mpv {

namespace {
// The signature of alsa-lib's handler; its headers are not needed to build.
void IgnoreAlsa(const char*, int, const char*, int, const char*, ...) {} // NOLINT: C's variadic callback
} // namespace

void QuietLibraries() {
    av_log_set_level(AV_LOG_QUIET);
    for (int level = 0; level < LAST_LOG_LEVEL; ++level)
        fluid_set_log_function(level, nullptr, nullptr);
    // Two sound systems of which libmpv asks whether they are there complain when they are not.
    setenv("PIPEWIRE_DEBUG", "0", 0); // NOLINT(concurrency-mt-unsafe): at the start of the process
    using SetHandler = int (*)(decltype(&IgnoreAlsa));
    if (const auto set = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "snd_lib_error_set_handler")))
        set(&IgnoreAlsa);
}

} // namespace kirolane::mpv
