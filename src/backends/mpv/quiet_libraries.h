#pragma once

namespace kirolane::mpv {

/// Keeps the libraries below libmpv from writing to standard error, which is for this program's own lines.
/// Before the first player is made.
void QuietLibraries();

} // namespace kirolane::mpv
