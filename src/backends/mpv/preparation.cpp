#include "backends/mpv/preparation.h"

namespace kirolane::mpv {

Preparation PrepareFile(const MediaFile& file, MidiShelf& shelf, const std::string& soundFont,
                        std::chrono::milliseconds limit) {
    Preparation preparation;
    if (IsMidiFile(file))
        preparation.midi = shelf.Get(file, soundFont, preparation.cause);
    else
        preparation.header = ReadMovieHeader(file.path, limit);
    return preparation;
}

} // namespace kirolane::mpv
