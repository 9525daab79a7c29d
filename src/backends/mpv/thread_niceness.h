#pragma once

namespace kirolane::mpv {

/// What the preview gives way by: where the processor is short, the audience's picture comes first.
inline constexpr int kPreviewNiceness = 5;

/// Of the calling thread alone, and of the threads that it starts from then on. Nothing for 0, and on a
/// system where it is a matter of whole processes.
void SetThreadNiceness(int niceness);

} // namespace kirolane::mpv
