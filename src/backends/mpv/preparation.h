#pragma once

#include "backends/mpv/media_file.h"
#include "backends/mpv/midi_shelf.h"
#include "backends/mpv/movie_header.h"

#include <chrono>
#include <string>

namespace kirolane::mpv {

/// What has to be known of a file before libmpv opens it.
struct Preparation {
    MovieHeader header;
    MidiShelf::Item midi; ///< what is played in place of a MIDI file
    std::string cause;    ///< "" or why it cannot be played
};

/// Takes at most about that long, but for a file that does not answer. Any thread.
Preparation PrepareFile(const MediaFile& file, MidiShelf& shelf, const std::string& soundFont,
                        std::chrono::milliseconds limit);

} // namespace kirolane::mpv
