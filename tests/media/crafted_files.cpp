#include "crafted_files.h"

#include <algorithm>
#include <cmath>

namespace kirolane::tests {

namespace {

std::string BigEndian(std::uint32_t number, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
    return text;
}

} // namespace

std::string LayerOneSilence(double seconds) {
    // 384 samples a frame at 48 kHz and 384 kbit/s; no sub-band has any bits.
    std::string frame("\xFF\xFF\xC4\x00", 4);
    frame.resize(384, '\0');
    std::string file;
    for (int i = 0; i < static_cast<int>(std::ceil(seconds * 48000 / 384)); ++i)
        file += frame;
    return file;
}

std::string MidiNumber(std::uint32_t number) {
    std::string text(1, static_cast<char>(number & 0x7F));
    while ((number >>= 7) != 0)
        text.insert(text.begin(), static_cast<char>((number & 0x7F) | 0x80));
    return text;
}

std::string MidiFile(int kind, int division, const std::vector<std::string>& tracks) {
    std::string file = "MThd" + BigEndian(6, 4) + BigEndian(static_cast<std::uint32_t>(kind), 2) +
                       BigEndian(static_cast<std::uint32_t>(tracks.size()), 2) +
                       BigEndian(static_cast<std::uint32_t>(division), 2);
    for (const std::string& track : tracks)
        file += "MTrk" + BigEndian(static_cast<std::uint32_t>(track.size()), 4) + track;
    return file;
}

std::string MidiFile(const std::vector<MidiNote>& notes) {
    struct Event {
        std::uint32_t tick;
        std::string message;
    };
    constexpr int quarter = 500; // ticks: one is a millisecond
    std::vector<Event> events;
    for (const MidiNote& note : notes) {
        const auto tick = static_cast<std::uint32_t>(std::lround(note.start * 1000));
        const auto end = tick + static_cast<std::uint32_t>(std::lround(note.length * 1000));
        const auto key = static_cast<char>(note.key);
        events.push_back({tick, {'\x90', key, static_cast<char>(note.velocity)}});
        events.push_back({end, {'\x80', key, '\0'}});
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& a, const Event& b) { return a.tick < b.tick; });
    std::string track;
    std::uint32_t now = 0;
    for (const Event& event : events) {
        track += MidiNumber(event.tick - now) + event.message;
        now = event.tick;
    }
    track += std::string("\0\xFF\x2F\0", 4);
    return MidiFile(0, quarter, {track});
}

} // namespace kirolane::tests
