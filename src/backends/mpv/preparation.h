#pragma once

#include "backends/mpv/media_file.h"
#include "backends/mpv/movie_header.h"
#include "backends/mpv/shelf.h"

#include <chrono>
#include <string>

namespace kirolane::mpv {

/// What has to be known of a file before libmpv opens it.
struct Preparation {
    MovieHeader header;
    Shelf::Item item;  ///< what libmpv reads
    bool midi = false; ///< which is the sound of a MIDI file
    std::string cause; ///< "" or why it cannot be played
};

/// Takes at most about that long, but for a file that does not answer. Any thread.
Preparation PrepareFile(const MediumPointer& medium, Shelf& shelf, const std::string& soundFont,
                        std::chrono::milliseconds limit);

} // namespace kirolane::mpv
