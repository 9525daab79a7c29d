#include "crafted_files.h"

#include "engine_test.h"

#include <cmath>

namespace kirolane::tests {

std::string BigEndian(std::uint32_t number, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i)
        text.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
    return text;
}

std::string Forged(const std::string& clip, const std::string& word, std::size_t offset,
                   std::string_view bytes) {
    std::string content = Content(clip);
    for (std::size_t at = content.find(word); at != std::string::npos;
         at = content.find(word, at + word.size()))
        content.replace(at + offset, bytes.size(), bytes);
    return content;
}

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
    constexpr int quarter = 500; // ticks: one is a millisecond
    std::string track;
    double now = 0.0;
    const auto at = [&](double seconds) {
        track += MidiNumber(static_cast<std::uint32_t>(std::lround((seconds - now) * 1000)));
        now = seconds;
    };
    for (const MidiNote& note : notes) {
        at(note.start);
        track += {'\x90', static_cast<char>(note.key), static_cast<char>(note.velocity)};
        at(note.start + note.length);
        track += {'\x80', static_cast<char>(note.key), '\0'};
    }
    return MidiFile(0, quarter, {track + std::string("\0\xFF\x2F\0", 4)});
}

} // namespace kirolane::tests
