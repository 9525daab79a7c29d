#pragma once

#include "backends/mpv/media_file.h"
#include "backends/mpv/midi_sound.h"

#include <mpv/client.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace kirolane::mpv {

/// The MIDI sounds that players hold, found by libmpv under names of a protocol of our own.
class MidiShelf {
public:
    /// A MIDI file's sound and the name under which libmpv opens it.
    struct Item {
        std::shared_ptr<MidiSound> sound;
        std::string uri;
    };

    /// Renders the file, or shares what another player holds of it. Nothing with a cause if it cannot.
    Item Get(const MediaFile& file, const std::string& soundFont, std::string& cause);
    /// Null once nobody holds it. Any thread.
    std::shared_ptr<MidiSound> Find(const std::string& uri);

private:
    struct Entry {
        MediaFile file;
        std::weak_ptr<MidiSound> sound;
    };

    std::mutex m_mutex;
    std::map<std::string, Entry> m_entries; ///< by name; under m_mutex
    unsigned m_last = 0;
};

/// Lets that player open what stands on the shelf, which must outlive it. Below 0 for a failure.
int OpenFromShelf(mpv_handle* handle, MidiShelf& shelf);

/// True if the file begins as a MIDI file does.
bool IsMidiFile(const MediaFile& file);

} // namespace kirolane::mpv
