#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kirolane::tests {

/// MPEG audio of layer I, for which ffmpeg has no encoder: silence of that many seconds.
std::string LayerOneSilence(double seconds);

struct MidiNote {
    double start = 0.0; ///< seconds
    double length = 0.5;
    int key = 69; ///< 69 is the A of 440 Hz
    int velocity = 100;
};

/// A MIDI file of one track, 120 quarters a minute.
std::string MidiFile(const std::vector<MidiNote>& notes);
/// The pieces that it is made of: any header and tracks.
std::string MidiFile(int kind, int division, const std::vector<std::string>& tracks);
/// A number in the form that MIDI files have for times.
std::string MidiNumber(std::uint32_t number);

} // namespace kirolane::tests
