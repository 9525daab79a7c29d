#pragma once

#include <chrono>

namespace kirolane::mpv {

// What an opening takes lies all over: some fifty threads of decoders and outputs come and go with each, and
// an allocator gives each thread a region of its own to take from. What a thread has freed another cannot
// have, so every mix of movies leaves its largest pictures in one more region, and the program grows by a
// movie for each region. Two regions, one for each core of a small machine, are filled again by the next
// opening instead; a cost of that in time has not been told from the scatter of openings. Taking every
// picture from the system and giving it back would keep less still, but costs a fifth of the time of an
// opening, as all that memory is cleared each time.

/// Keeps the number of regions small. Before the threads that play are started.
void LimitMemoryRegions();

/// After this, libmpv has let go of what a closed file took.
inline constexpr std::chrono::milliseconds kLetGo{500};

/// Gives the free parts of the regions back to the system: takes some ten milliseconds, for each region of
/// which nobody can have memory of it. Between two movies there is no need, the next one fills them again.
void GiveMemoryBack();

} // namespace kirolane::mpv
