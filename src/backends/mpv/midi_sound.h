#pragma once

#include "backends/mpv/byte_stream.h"
#include "backends/mpv/midi_song.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kirolane::mpv {

/// A MIDI file rendered to PCM behind a WAV header, as a file that libmpv reads. A worker renders ahead of
/// the reader; twins share one.
class MidiSound : public ByteSource, public std::enable_shared_from_this<MidiSound> {
public:
    /// Begins rendering, on a thread of the caller's niceness. Nothing with a cause if the SoundFont cannot
    /// be used. A short piece is waited for, so that its end can be cut where the sound has died away; a long
    /// one, and one that is not rendered in a moment, gets an end of fixed length.
    static std::shared_ptr<MidiSound> Render(MidiSong song, const std::string& soundFont, std::string& cause);

    ~MidiSound() override;
    MidiSound(const MidiSound&) = delete;
    MidiSound& operator=(const MidiSound&) = delete;

    [[nodiscard]] std::int64_t Size() const { return m_size; } ///< bytes, the header's with them

    std::unique_ptr<ByteStream> Open() override { return std::make_unique<Stream>(shared_from_this()); }

    /// Its reads wait for the bytes to be rendered.
    class Stream : public ByteStream {
    public:
        explicit Stream(std::shared_ptr<MidiSound> sound) : m_sound(std::move(sound)) {}

        std::int64_t Read(char* buffer, std::uint64_t size) override;
        std::int64_t Seek(std::int64_t offset) override;
        [[nodiscard]] std::int64_t Size() const override { return m_sound->Size(); }
        void Cancel() override;

    private:
        std::shared_ptr<MidiSound> m_sound;
        std::int64_t m_position = 0;
        std::atomic<bool> m_cancelled = false;
    };

private:
    class Synthesizer;

    explicit MidiSound(MidiSong song);

    void Work(std::unique_ptr<Synthesizer> synthesizer);
    /// Appends so many frames, or fewer at the end of a chunk. The loudest sample.
    int RenderFrames(Synthesizer& synthesizer, std::int64_t count, std::int64_t& rendered);
    void PlayTail(Synthesizer& synthesizer);
    [[nodiscard]] bool EndIsOpen();
    /// Fixes the end, in frames.
    void SetFrames(std::int64_t frames);
    [[nodiscard]] std::int64_t FixedFrames() const;

    static constexpr std::int64_t kChunkFrames = 1 << 16;

    const MidiSong m_song;
    const int m_sampleRate;

    std::mutex m_mutex;
    std::condition_variable m_grown;
    // Under m_mutex.
    std::vector<std::unique_ptr<std::int16_t[]>> m_chunks; ///< kChunkFrames each, stereo
    std::int64_t m_rendered = 0;                           ///< frames
    bool m_done = false;
    bool m_endIsOpen; ///< it comes where the sound has died away

    std::int64_t m_size = 0; ///< bytes; fixed before anyone reads
    std::vector<std::uint8_t> m_header;

    std::atomic<bool> m_quit = false;
    std::thread m_worker;
};

} // namespace kirolane::mpv
