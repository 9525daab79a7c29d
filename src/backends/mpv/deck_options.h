#pragma once

#include "backends/mpv/mpv_media.h"

#include <mpv/client.h>

namespace kirolane::mpv {

/// libavformat's demuxers that may open a file, as it names them, comma-separated: the containers of the
/// known extensions, and none that names other files (playlists, manifests, image sequences).
extern const char* const kFormats;

/// Sets every option of the role on a handle not yet initialized. Throws RuntimeException, naming the option,
/// where libmpv takes one not.
void ApplyOptions(mpv_handle* handle, const PlayerRole& role, const MpvOptions& options);

} // namespace kirolane::mpv
