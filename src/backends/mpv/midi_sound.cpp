#include "backends/mpv/midi_sound.h"

#include <fluidsynth.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace kirolane::mpv {

namespace {

constexpr int kSampleRate = 44100;
/// Of pieces that would take too much memory otherwise: an hour is then 318 MB.
constexpr int kLowSampleRate = 22050;
constexpr double kLowFrom = 1680.0; ///< seconds

/// A piece up to this length is rendered whole before it plays: a tenth of a second's work, but for a crowd
/// of notes, which is not waited for longer than this.
constexpr double kShort = 60.0;
constexpr std::chrono::milliseconds kPatience{500};
/// After the last event, in seconds: the fixed end of a long piece, and the longest of a short one.
constexpr double kLongPieceTail = 2.0;
constexpr double kLongestTail = 8.0;
/// The sound has died away where this many seconds stay below this sample.
constexpr double kQuietFor = 0.1;
constexpr int kQuiet = 24;
constexpr double kGain = 0.5;

/// Frames rendered at a stretch, after which an end of the rendering is looked for.
constexpr std::int64_t kStretch = 1024;

constexpr std::int64_t kBytesPerFrame = 4;
constexpr std::size_t kHeaderSize = 44;

std::vector<std::uint8_t> WavHeader(std::int64_t frames, int sampleRate) {
    std::vector<std::uint8_t> header;
    const auto text = [&](const char* s) { header.insert(header.end(), s, s + 4); };
    const auto number = [&](std::int64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            header.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFF));
    };
    const std::int64_t data = frames * kBytesPerFrame;
    text("RIFF");
    number(data + static_cast<std::int64_t>(kHeaderSize) - 8, 4);
    text("WAVE");
    text("fmt ");
    number(16, 4);
    number(1, 2); // PCM
    number(2, 2); // channels
    number(sampleRate, 4);
    number(sampleRate * kBytesPerFrame, 4);
    number(kBytesPerFrame, 2);
    number(16, 2); // bits
    text("data");
    number(data, 4);
    return header;
}

} // namespace

/// libfluidsynth, driven event by event: its own reader of files is not used.
class MidiSound::Synthesizer {
public:
    explicit Synthesizer(int sampleRate) : m_settings(new_fluid_settings()) {
        fluid_settings_setnum(m_settings, "synth.sample-rate", sampleRate);
        fluid_settings_setnum(m_settings, "synth.gain", kGain);
        fluid_settings_setint(m_settings, "synth.lock-memory", 0);
        fluid_settings_setint(m_settings, "synth.threadsafe-api", 0);
        m_synth = new_fluid_synth(m_settings);
    }
    ~Synthesizer() {
        delete_fluid_synth(m_synth);
        delete_fluid_settings(m_settings);
    }
    Synthesizer(const Synthesizer&) = delete;
    Synthesizer& operator=(const Synthesizer&) = delete;

    bool Load(const std::string& soundFont) {
        return m_synth != nullptr && fluid_synth_sfload(m_synth, soundFont.c_str(), 1) != FLUID_FAILED;
    }

    void Send(const MidiEvent& event, const MidiSong& song) {
        const int channel = event.status & 0x0F;
        switch (event.status & 0xF0) {
        case 0x80:
            fluid_synth_noteoff(m_synth, channel, event.data1);
            break;
        case 0x90:
            fluid_synth_noteon(m_synth, channel, event.data1, event.data2); // 0 ends the note
            break;
        case 0xA0:
            fluid_synth_key_pressure(m_synth, channel, event.data1, event.data2);
            break;
        case 0xB0:
            fluid_synth_cc(m_synth, channel, event.data1, event.data2);
            break;
        case 0xC0:
            fluid_synth_program_change(m_synth, channel, event.data1);
            break;
        case 0xD0:
            fluid_synth_channel_pressure(m_synth, channel, event.data1);
            break;
        case 0xE0:
            fluid_synth_pitch_bend(m_synth, channel, event.data1 | event.data2 << 7);
            break;
        default:
            const auto& message = song.systemMessages[event.system];
            fluid_synth_sysex(m_synth, reinterpret_cast<const char*>(message.data()),
                              static_cast<int>(message.size()), nullptr, nullptr, nullptr, 0);
        }
    }
    void EndNotes() {
        for (int channel = 0; channel < 16; ++channel)
            fluid_synth_all_notes_off(m_synth, channel);
    }
    void Write(std::int16_t* frames, std::int64_t count) {
        fluid_synth_write_s16(m_synth, static_cast<int>(count), frames, 0, 2, frames, 1, 2);
    }

private:
    fluid_settings_t* m_settings;
    fluid_synth_t* m_synth = nullptr;
};

MidiSound::MidiSound(MidiSong song)
    : m_song(std::move(song)), m_sampleRate(m_song.seconds < kLowFrom ? kSampleRate : kLowSampleRate),
      m_endIsOpen(m_song.seconds <= kShort) {}

std::shared_ptr<MidiSound> MidiSound::Render(MidiSong song, const std::string& soundFont,
                                             std::string& cause) {
    std::shared_ptr<MidiSound> sound(new MidiSound(std::move(song)));
    auto synthesizer = std::make_unique<Synthesizer>(sound->m_sampleRate);
    if (!synthesizer->Load(soundFont)) {
        cause = "the SoundFont " + soundFont + " cannot be used";
        return nullptr;
    }
    const auto patience = sound->m_endIsOpen ? kPatience : std::chrono::milliseconds(0);
    sound->m_worker = std::thread(
        [self = sound.get(), owned = std::move(synthesizer)]() mutable { self->Work(std::move(owned)); });
    std::unique_lock lock(sound->m_mutex);
    if (!sound->m_grown.wait_for(lock, patience, [&] { return sound->m_done; }))
        sound->SetFrames(sound->FixedFrames());
    return sound;
}

MidiSound::~MidiSound() {
    m_quit = true;
    if (m_worker.joinable())
        m_worker.join();
}

std::int64_t MidiSound::FixedFrames() const {
    return static_cast<std::int64_t>((m_song.seconds + kLongPieceTail) * m_sampleRate);
}

bool MidiSound::EndIsOpen() {
    const std::lock_guard lock(m_mutex);
    return m_endIsOpen;
}

void MidiSound::SetFrames(std::int64_t frames) {
    m_endIsOpen = false;
    m_size = frames * kBytesPerFrame + static_cast<std::int64_t>(kHeaderSize);
    m_header = WavHeader(frames, m_sampleRate);
}

void MidiSound::Work(std::unique_ptr<Synthesizer> synthesizer) {
    std::int64_t done = 0;
    for (const MidiEvent& event : m_song.events) {
        const auto due = static_cast<std::int64_t>(event.time * m_sampleRate);
        while (done < due && !m_quit)
            RenderFrames(*synthesizer, due - done, done);
        if (m_quit)
            return;
        synthesizer->Send(event, m_song);
    }
    synthesizer->EndNotes();
    while (!m_quit) {
        PlayTail(*synthesizer);
        const std::lock_guard lock(m_mutex);
        if (!m_endIsOpen && m_rendered < FixedFrames())
            continue; // it has been fixed just now
        if (m_endIsOpen)
            SetFrames(m_rendered);
        m_done = true;
        m_grown.notify_all();
        return;
    }
}

void MidiSound::PlayTail(Synthesizer& synthesizer) {
    const auto last = static_cast<std::int64_t>(m_song.seconds * m_sampleRate);
    const std::int64_t longest = last + static_cast<std::int64_t>(kLongestTail * m_sampleRate);
    const auto window = static_cast<std::int64_t>(kQuietFor * m_sampleRate);
    std::int64_t done = m_rendered;
    std::int64_t quiet = 0;
    while (!m_quit) {
        const bool open = EndIsOpen();
        const std::int64_t end = open ? longest : FixedFrames();
        if (done >= end || (open && quiet >= window))
            return;
        const std::int64_t before = done;
        const int loudest = RenderFrames(synthesizer, std::min(end - done, window / 4), done);
        quiet = loudest < kQuiet ? quiet + done - before : 0;
    }
}

int MidiSound::RenderFrames(Synthesizer& synthesizer, std::int64_t count, std::int64_t& rendered) {
    // Only this thread appends; readers look at whole frames below m_rendered.
    const std::int64_t offset = rendered % kChunkFrames;
    if (offset == 0) {
        auto chunk = std::make_unique<std::int16_t[]>(static_cast<std::size_t>(kChunkFrames) * 2);
        const std::lock_guard lock(m_mutex);
        m_chunks.push_back(std::move(chunk));
    }
    count = std::min({count, kChunkFrames - offset, kStretch});
    std::int16_t* frames = m_chunks.back().get() + offset * 2;
    synthesizer.Write(frames, count);
    int loudest = 0;
    for (std::int64_t i = 0; i < count * 2; ++i)
        loudest = std::max(loudest, std::abs(static_cast<int>(frames[i])));
    rendered += count;
    const std::lock_guard lock(m_mutex);
    m_rendered = rendered;
    m_grown.notify_all();
    return loudest;
}

std::int64_t MidiSound::Stream::Read(char* buffer, std::uint64_t size) {
    const auto headerSize = static_cast<std::int64_t>(kHeaderSize);
    if (m_position >= m_sound->m_size)
        return 0;
    if (m_position < headerSize) {
        const auto count = std::min<std::int64_t>(static_cast<std::int64_t>(size), headerSize - m_position);
        std::memcpy(buffer, m_sound->m_header.data() + m_position, static_cast<std::size_t>(count));
        m_position += count;
        return count;
    }
    const std::int64_t offset = m_position - headerSize;
    const std::int64_t frame = offset / kBytesPerFrame;
    std::unique_lock lock(m_sound->m_mutex);
    m_sound->m_grown.wait(lock,
                          [&] { return m_cancelled || m_sound->m_done || m_sound->m_rendered > frame; });
    if (m_cancelled || m_sound->m_rendered <= frame)
        return m_cancelled ? -1 : 0;
    // What is there of this chunk.
    const std::int64_t chunk = frame / kChunkFrames;
    const std::int64_t end = std::min(m_sound->m_rendered, (chunk + 1) * kChunkFrames) * kBytesPerFrame;
    const auto count =
        std::min({static_cast<std::int64_t>(size), end - offset, m_sound->m_size - m_position});
    const auto* bytes =
        reinterpret_cast<const char*>(m_sound->m_chunks[static_cast<std::size_t>(chunk)].get());
    std::memcpy(buffer, bytes + (offset - chunk * kChunkFrames * kBytesPerFrame),
                static_cast<std::size_t>(count));
    m_position += count;
    return count;
}

std::int64_t MidiSound::Stream::Seek(std::int64_t offset) {
    if (offset < 0 || offset > m_sound->m_size)
        return -1;
    m_position = offset;
    return offset;
}

void MidiSound::Stream::Cancel() {
    m_cancelled = true;
    const std::lock_guard lock(m_sound->m_mutex);
    m_sound->m_grown.notify_all();
}

} // namespace kirolane::mpv
