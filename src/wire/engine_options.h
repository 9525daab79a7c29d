#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace kirolane::wire {

/// What a player is there for. Preview and Stage are twins: they open the same file, one for the operator,
/// one for the audience.
enum class Role : std::uint8_t {
    Preview, ///< always silent, decoded at the least cost
    Stage,   ///< the audience's picture and sound
    Sound,   ///< sound alone; pictures, which nobody sees, only where there is no sound
};

struct PlayerRole {
    std::string path; ///< the player's own, as in "MonitorForm.QTM"
    Role role = Role::Stage;
    std::string streamName; ///< what the desktop's mixer shows
};

struct EngineOptions {
    /// Players of another path are of role Stage.
    std::vector<PlayerRole> roles = {};
    /// libmpv's names of the outputs to try in turn. The last keeps the show going without a sound device.
    std::string audioOutput = "pipewire,pulse,alsa,null";
    /// For the Preview role, which is muted besides.
    std::string previewOutput = "null";
    /// Where the output "pcm" writes: this, a point, the player's path, ".wav".
    std::string audioFileBase = {};
    /// For all loads of one handler together.
    std::chrono::milliseconds loadLimit{5000};
    /// How long a start waits for the pictures of its players.
    std::chrono::milliseconds seekLimit{1000};
    /// For MIDI files; "" is the first one that the system has.
    std::string soundFont = {};
};

} // namespace kirolane::wire
