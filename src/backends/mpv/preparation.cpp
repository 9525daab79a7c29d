#include "backends/mpv/preparation.h"

namespace kirolane::mpv {

Preparation PrepareFile(const MediumPointer& medium, Shelf& shelf, const std::string& soundFont,
                        std::chrono::milliseconds limit) {
    Preparation preparation;
    preparation.midi = IsMidiFile(*medium);
    if (preparation.midi) {
        preparation.item = shelf.GetMidi(medium, soundFont, preparation.cause);
    } else {
        preparation.item = shelf.Put(medium);
        preparation.header = ReadMovieHeader(medium, limit);
    }
    return preparation;
}

} // namespace kirolane::mpv
