#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kirolane::mpv {

/// One message to the synthesizer.
struct MidiEvent {
    double time = 0.0;       ///< seconds from the start
    std::uint8_t status = 0; ///< with the channel; 0xF0 for a system message
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    std::uint32_t system = 0; ///< index of a system message's bytes
};

/// A MIDI file read into a list in the order of time. Files of any size and truth: what cannot be read of a
/// track ends that track, and what lies beyond the limits is left out.
struct MidiSong {
    static constexpr double kLongest = 3600.0; ///< seconds
    static constexpr std::size_t kMostEvents = 2'000'000;
    static constexpr std::size_t kLargestFile = 16'000'000; ///< bytes

    std::vector<MidiEvent> events;
    std::vector<std::vector<std::uint8_t>> systemMessages; ///< without their F0 and F7
    double seconds = 0.0;                                  ///< to the last event, above 0
    bool cut = false;                                      ///< something lay beyond the limits
};

/// True for what begins as a MIDI file does.
bool IsMidi(std::span<const std::uint8_t> bytes);

/// Nothing with a cause if there is nothing to play in it.
std::optional<MidiSong> ReadMidi(std::span<const std::uint8_t> bytes, std::string& cause);

} // namespace kirolane::mpv
