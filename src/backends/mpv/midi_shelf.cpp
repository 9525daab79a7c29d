#include "backends/mpv/midi_shelf.h"

#include <mpv/stream_cb.h>

#include <algorithm>
#include <array>
#include <unistd.h>

namespace kirolane::mpv {

namespace {

constexpr const char* kProtocol = "kirolane";

/// At most so many bytes from the front.
std::vector<std::uint8_t> ReadFront(const std::string& path, std::size_t most) {
    std::vector<std::uint8_t> bytes;
    const int file = OpenRegular(path);
    if (file < 0)
        return bytes;
    std::array<std::uint8_t, 65536> buffer;
    while (bytes.size() < most) {
        const auto count = read(file, buffer.data(), std::min(buffer.size(), most - bytes.size()));
        if (count <= 0)
            break;
        bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + count);
    }
    close(file);
    return bytes;
}

MidiSound::Stream& StreamOf(void* cookie) {
    return *static_cast<MidiSound::Stream*>(cookie);
}

int Open(void* shelf, char* uri, mpv_stream_cb_info* info) {
    auto sound = static_cast<MidiShelf*>(shelf)->Find(uri);
    if (sound == nullptr)
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = new MidiSound::Stream(std::move(sound));
    info->read_fn = [](void* cookie, char* buffer, std::uint64_t size) {
        return StreamOf(cookie).Read(buffer, size);
    };
    info->seek_fn = [](void* cookie, std::int64_t offset) -> std::int64_t {
        const std::int64_t place = StreamOf(cookie).Seek(offset);
        return place < 0 ? static_cast<std::int64_t>(MPV_ERROR_GENERIC) : place;
    };
    info->size_fn = [](void* cookie) { return StreamOf(cookie).Size(); };
    info->close_fn = [](void* cookie) { delete &StreamOf(cookie); };
    info->cancel_fn = [](void* cookie) { StreamOf(cookie).Cancel(); };
    return 0;
}

} // namespace

bool IsMidiFile(const MediaFile& file) {
    return IsMidi(ReadFront(file.path, 4));
}

MidiShelf::Item MidiShelf::Get(const MediaFile& file, const std::string& soundFont, std::string& cause) {
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_entries, [](const auto& entry) { return entry.second.sound.expired(); });
        for (const auto& [uri, entry] : m_entries)
            if (entry.file == file)
                if (auto sound = entry.sound.lock())
                    return {std::move(sound), uri};
    }
    const std::string font = FindSoundFont(soundFont);
    if (font.empty()) {
        cause = "there is no SoundFont to play MIDI files with";
        return {};
    }
    if (static_cast<std::size_t>(file.size) > MidiSong::kLargestFile) {
        cause = "is too large for a MIDI file";
        return {};
    }
    auto song = ReadMidi(ReadFront(file.path, MidiSong::kLargestFile), cause);
    if (!song)
        return {};
    auto sound = MidiSound::Render(std::move(*song), font, cause);
    if (sound == nullptr)
        return {};
    const std::lock_guard lock(m_mutex);
    const std::string uri = std::string(kProtocol) + "://midi" + std::to_string(++m_last);
    m_entries[uri] = {file, sound};
    return {std::move(sound), uri};
}

std::shared_ptr<MidiSound> MidiShelf::Find(const std::string& uri) {
    const std::lock_guard lock(m_mutex);
    const auto it = m_entries.find(uri);
    return it == m_entries.end() ? nullptr : it->second.sound.lock();
}

int OpenFromShelf(mpv_handle* handle, MidiShelf& shelf) {
    return mpv_stream_cb_add_ro(handle, kProtocol, &shelf, &Open);
}

} // namespace kirolane::mpv
