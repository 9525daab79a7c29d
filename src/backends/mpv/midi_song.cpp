#include "backends/mpv/midi_song.h"

#include <algorithm>
#include <cstring>

namespace kirolane::mpv {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr double kFirstTempo = 0.5; ///< seconds a quarter, until the file says otherwise

/// Takes numbers from the front; once the bytes run out, everything reads 0 and Failed says so.
class Reader {
public:
    explicit Reader(Bytes bytes) : m_bytes(bytes) {}

    [[nodiscard]] bool Failed() const { return m_failed; }
    [[nodiscard]] bool AtEnd() const { return m_failed || m_bytes.empty(); }

    Bytes Take(std::size_t count) {
        if (count > m_bytes.size()) {
            m_failed = true;
            return {};
        }
        const Bytes taken = m_bytes.first(count);
        m_bytes = m_bytes.subspan(count);
        return taken;
    }
    /// What is left, if it is less.
    Bytes TakeUpTo(std::size_t count) { return Take(std::min(count, m_bytes.size())); }

    std::uint32_t Number(std::size_t size) {
        std::uint32_t number = 0;
        for (const std::uint8_t byte : Take(size))
            number = number << 8 | byte;
        return number;
    }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Number(1)); }
    [[nodiscard]] std::uint8_t Peek() const { return m_bytes.empty() ? 0 : m_bytes.front(); }

    /// Seven bits a byte, at most four bytes.
    std::uint32_t Variable() {
        std::uint32_t number = 0;
        for (int i = 0; i < 4; ++i) {
            const std::uint8_t byte = Byte();
            number = number << 7 | (byte & 0x7FU);
            if ((byte & 0x80U) == 0)
                return number;
        }
        m_failed = true;
        return 0;
    }

private:
    Bytes m_bytes;
    bool m_failed = false;
};

/// An event in ticks; a tempo where status is 0.
struct Timed {
    std::uint64_t tick = 0;
    MidiEvent event;
    double tempo = 0.0;
};

constexpr bool HasSecondByte(std::uint8_t status) {
    const auto kind = status & 0xF0U;
    return kind != 0xC0 && kind != 0xD0;
}

class SongReader {
public:
    bool Read(Bytes bytes) {
        Reader reader(bytes);
        reader.Take(4); // "MThd"
        Reader header(reader.TakeUpTo(reader.Number(4)));
        header.Number(2); // the kind: all tracks are played at once in any
        header.Number(2); // the number of tracks: those that are there count
        m_division = header.Number(2);
        if (header.Failed() || !TicksMakeSense())
            return false;
        while (!reader.AtEnd()) {
            const Bytes name = reader.Take(4);
            const std::uint32_t length = reader.Number(4);
            if (reader.Failed())
                break;
            const Bytes content = reader.TakeUpTo(length);
            if (std::memcmp(name.data(), "MTrk", 4) == 0)
                ReadTrack(content);
        }
        return true;
    }

    MidiSong Finish() {
        std::stable_sort(m_timed.begin(), m_timed.end(),
                         [](const Timed& a, const Timed& b) { return a.tick < b.tick; });
        double time = 0.0;
        double tempo = kFirstTempo;
        std::uint64_t tick = 0;
        for (const Timed& timed : m_timed) {
            time += static_cast<double>(timed.tick - tick) * SecondsPerTick(tempo);
            tick = timed.tick;
            if (time > MidiSong::kLongest) {
                m_song.cut = true;
                break;
            }
            if (timed.tempo > 0.0) {
                tempo = timed.tempo;
                continue;
            }
            m_song.events.push_back(timed.event);
            m_song.events.back().time = time;
        }
        m_song.seconds = m_song.events.empty() ? 0.0 : m_song.events.back().time;
        return std::move(m_song);
    }

private:
    [[nodiscard]] bool CountsFrames() const { return (m_division & 0x8000U) != 0; }
    [[nodiscard]] bool TicksMakeSense() const {
        return CountsFrames() ? (m_division & 0xFFU) != 0 : m_division != 0;
    }
    [[nodiscard]] double SecondsPerTick(double tempo) const {
        if (!CountsFrames())
            return tempo / m_division;
        const int frames = 256 - static_cast<int>(m_division >> 8);
        return 1.0 / ((frames == 29 ? 29.97 : frames) * (m_division & 0xFFU));
    }

    void ReadTrack(Bytes content) {
        Reader reader(content);
        std::uint64_t tick = 0;
        std::uint8_t running = 0;
        while (!reader.AtEnd()) {
            if (m_timed.size() >= MidiSong::kMostEvents) {
                m_song.cut = true;
                return;
            }
            tick += reader.Variable();
            std::uint8_t status = running;
            if (reader.Peek() >= 0x80)
                status = reader.Byte();
            if (status < 0x80 || !ReadEvent(reader, tick, status))
                return;
            if (status < 0xF0)
                running = status;
        }
    }

    /// False at the end of the track.
    bool ReadEvent(Reader& reader, std::uint64_t tick, std::uint8_t status) {
        if (status == 0xFF)
            return ReadMeta(reader, tick);
        Timed timed;
        timed.tick = tick;
        timed.event.status = status;
        if (status == 0xF0 || status == 0xF7) {
            Bytes message = reader.Take(reader.Variable());
            if (status == 0xF7 || message.empty()) // pieces of messages are left out
                return !reader.Failed();
            if (message.back() == 0xF7)
                message = message.first(message.size() - 1);
            timed.event.system = static_cast<std::uint32_t>(m_song.systemMessages.size());
            m_song.systemMessages.emplace_back(message.begin(), message.end());
        } else if (status < 0xF0) {
            timed.event.data1 = reader.Byte() & 0x7FU;
            if (HasSecondByte(status))
                timed.event.data2 = reader.Byte() & 0x7FU;
        } else {
            return false;
        }
        if (!reader.Failed())
            m_timed.push_back(timed);
        return !reader.Failed();
    }

    bool ReadMeta(Reader& reader, std::uint64_t tick) {
        const std::uint8_t type = reader.Byte();
        Reader data(reader.Take(reader.Variable()));
        if (reader.Failed() || type == 0x2F)
            return false;
        if (type != 0x51)
            return true;
        Timed timed;
        timed.tick = tick;
        timed.tempo = data.Number(3) / 1e6;
        if (timed.tempo > 0.0)
            m_timed.push_back(timed);
        return true;
    }

    std::uint32_t m_division = 0;
    std::vector<Timed> m_timed;
    MidiSong m_song;
};

} // namespace

bool IsMidi(Bytes bytes) {
    return bytes.size() >= 4 && std::memcmp(bytes.data(), "MThd", 4) == 0;
}

std::optional<MidiSong> ReadMidi(Bytes bytes, std::string& cause) {
    SongReader reader;
    if (!IsMidi(bytes) || !reader.Read(bytes)) {
        cause = "is not a whole MIDI file";
        return std::nullopt;
    }
    MidiSong song = reader.Finish();
    const bool sounds = std::any_of(song.events.begin(), song.events.end(), [](const MidiEvent& event) {
        return (event.status & 0xF0U) == 0x90 && event.data2 > 0;
    });
    if (!sounds || song.seconds <= 0.0) {
        cause = "nothing in it can be played";
        return std::nullopt;
    }
    return song;
}

} // namespace kirolane::mpv
