#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane::tests {

std::string BigEndian(std::uint32_t number, int bytes = 4);

/// The clip of make_clips.sh with other bytes so far behind the beginning of that word, wherever it stands.
std::string Forged(const std::string& clip, const std::string& word, std::size_t offset,
                   std::string_view bytes);

/// MPEG audio of layer I, for which ffmpeg has no encoder: silence of that many seconds.
std::string LayerOneSilence(double seconds);

struct MidiNote {
    double start = 0.0; ///< seconds
    double length = 0.5;
    int key = 69; ///< 69 is the A of 440 Hz
    int velocity = 100;
};

/// A MIDI file of one track, 120 quarters a minute; one note after the other.
std::string MidiFile(const std::vector<MidiNote>& notes);
/// The pieces that it is made of: any header and tracks.
std::string MidiFile(int kind, int division, const std::vector<std::string>& tracks);
/// A number in the form that MIDI files have for times.
std::string MidiNumber(std::uint32_t number);

} // namespace kirolane::tests
