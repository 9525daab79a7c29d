#pragma once

#include "backends/mpv/byte_stream.h"
#include "backends/mpv/media_file.h"
#include "backends/mpv/midi_sound.h"

#include <mpv/client.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace kirolane::mpv {

/// What players hold, found by libmpv under names of a protocol of our own: media that have been opened, and
/// the sounds of MIDI files. Any thread.
class Shelf {
public:
    /// What is read, and the name under which libmpv opens it as long as someone holds it.
    struct Item {
        std::shared_ptr<ByteSource> source;
        std::string uri;
    };

    Item Put(const MediumPointer& medium);
    /// Renders a MIDI file, or shares what another player holds of it. Nothing with a cause if it cannot.
    Item GetMidi(const MediumPointer& medium, const std::string& soundFont, std::string& cause);
    /// Null once nobody holds it.
    std::shared_ptr<ByteSource> Find(const std::string& uri);

private:
    struct Entry {
        MediaFile midi; ///< that the sound is of
        std::weak_ptr<ByteSource> source;
    };
    Item Add(std::shared_ptr<ByteSource> source, const MediaFile& midi, const std::string& suffix);

    std::mutex m_mutex;
    std::map<std::string, Entry> m_entries; ///< by name; under m_mutex
    unsigned m_last = 0;
};

/// Lets that player open what stands on the shelf, which must outlive it. Below 0 for a failure.
int OpenFromShelf(mpv_handle* handle, Shelf& shelf);

/// True if the file begins as a MIDI file does.
bool IsMidiFile(const Medium& medium);

} // namespace kirolane::mpv
