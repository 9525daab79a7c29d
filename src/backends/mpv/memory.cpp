#include "backends/mpv/memory.h"

#include <cstdlib> // tells which C library it is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kirolane::mpv {

#ifdef __GLIBC__

void LimitMemoryRegions() {
    mallopt(M_ARENA_MAX, 2);
}

void GiveMemoryBack() {
    malloc_trim(0);
}

#else

void LimitMemoryRegions() {}
void GiveMemoryBack() {}

#endif

} // namespace kirolane::mpv
