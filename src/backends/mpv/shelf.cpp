#include "backends/mpv/shelf.h"

#include "wire/sound_font.h"

#include <mpv/stream_cb.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace kirolane::mpv {

namespace {

constexpr const char* kProtocol = "kirolane";
constexpr std::size_t kLongestSuffix = 6; ///< with its point

/// Of the file's name, where libavformat takes a hint from it.
std::string SuffixOf(const std::string& path) {
    const std::string suffix = std::filesystem::path(path).extension().native();
    const auto plain = [](unsigned char c) { return std::isalnum(c) != 0 || c == '.'; };
    return suffix.size() <= kLongestSuffix && std::all_of(suffix.begin(), suffix.end(), plain) ? suffix : "";
}

/// A file that has been opened.
class MediumSource : public ByteSource {
public:
    explicit MediumSource(MediumPointer medium) : m_medium(std::move(medium)) {}
    std::unique_ptr<ByteStream> Open() override { return std::make_unique<Stream>(m_medium); }

private:
    class Stream : public ByteStream {
    public:
        explicit Stream(MediumPointer medium) : m_medium(std::move(medium)) {}
        std::int64_t Read(char* buffer, std::uint64_t size) override {
            const std::int64_t count = m_medium->Read(buffer, size, m_position);
            m_position += std::max<std::int64_t>(count, 0);
            return count;
        }
        std::int64_t Seek(std::int64_t offset) override {
            if (offset < 0)
                return -1;
            m_position = offset;
            return offset;
        }
        [[nodiscard]] std::int64_t Size() const override { return m_medium->File().size; }

    private:
        const MediumPointer m_medium;
        std::int64_t m_position = 0;
    };

    const MediumPointer m_medium;
};

/// At most so many bytes from the front.
std::vector<std::uint8_t> ReadFront(const Medium& medium, std::size_t most) {
    std::vector<std::uint8_t> bytes(
        std::min(most, static_cast<std::size_t>(std::max<std::int64_t>(medium.File().size, 0))));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto count =
            medium.Read(bytes.data() + done, bytes.size() - done, static_cast<std::int64_t>(done));
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

ByteStream& StreamOf(void* cookie) {
    return *static_cast<ByteStream*>(cookie);
}

int Open(void* shelf, char* uri, mpv_stream_cb_info* info) {
    const auto source = static_cast<Shelf*>(shelf)->Find(uri);
    if (source == nullptr)
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = source->Open().release();
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

bool IsMidiFile(const Medium& medium) {
    return IsMidi(ReadFront(medium, 4));
}

Shelf::Item Shelf::Add(std::shared_ptr<ByteSource> source, const MediaFile& midi, const std::string& suffix) {
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_entries, [](const auto& entry) { return entry.second.source.expired(); });
    const std::string uri = std::string(kProtocol) + "://" + std::to_string(++m_last) + suffix;
    m_entries[uri] = {midi, source};
    return {std::move(source), uri};
}

Shelf::Item Shelf::Put(const MediumPointer& medium) {
    return Add(std::make_shared<MediumSource>(medium), {}, SuffixOf(medium->File().path));
}

Shelf::Item Shelf::GetMidi(const MediumPointer& medium, const std::string& soundFont, std::string& cause) {
    const MediaFile& file = medium->File();
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& [uri, entry] : m_entries)
            if (entry.midi == file)
                if (auto sound = entry.source.lock())
                    return {std::move(sound), uri};
    }
    const std::string font = wire::FindSoundFont(soundFont);
    if (font.empty()) {
        cause = "there is no SoundFont to play MIDI files with";
        return {};
    }
    if (static_cast<std::size_t>(file.size) > MidiSong::kLargestFile) {
        cause = "is too large for a MIDI file";
        return {};
    }
    auto song = ReadMidi(ReadFront(*medium, MidiSong::kLargestFile), cause);
    if (!song)
        return {};
    auto sound = MidiSound::Render(std::move(*song), font, cause);
    if (sound == nullptr)
        return {};
    return Add(std::move(sound), file, "");
}

std::shared_ptr<ByteSource> Shelf::Find(const std::string& uri) {
    const std::lock_guard lock(m_mutex);
    const auto it = m_entries.find(uri);
    return it == m_entries.end() ? nullptr : it->second.source.lock();
}

int OpenFromShelf(mpv_handle* handle, Shelf& shelf) {
    return mpv_stream_cb_add_ro(handle, kProtocol, &shelf, &Open);
}

} // namespace kirolane::mpv
