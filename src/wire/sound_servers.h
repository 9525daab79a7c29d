#pragma once

#include <string>
#include <vector>

namespace kirolane::wire {

/// Where the sound servers of this session listen, by the environment that their libraries read, too.
struct SoundServers {
    std::string pipewire;
    std::string pulse;           ///< "" if it is on another machine
    bool pulseElsewhere = false; ///< it is
};

SoundServers FindSoundServers();

/// The sockets that a player may be connected to: those, and the servers' places for the whole machine.
std::vector<std::string> SoundServerSockets();

} // namespace kirolane::wire
