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

/// Tells libpulse the socket, by the environment. Left to itself it makes or mends the folder of the socket
/// first, and gives up where it may not. While there is one thread.
void NamePulseServer();

} // namespace kirolane::wire
