#include "wire/sound_servers.h"

#include <cstdlib>

namespace kirolane::wire {

namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nobody sets one after the start
    return value == nullptr ? "" : value;
}

std::string PipeWireSocket() {
    std::string path = Variable("PIPEWIRE_REMOTE");
    if (path.empty())
        path = "pipewire-0";
    if (!path.starts_with('/')) {
        std::string folder = Variable("PIPEWIRE_RUNTIME_DIR");
        if (folder.empty())
            folder = Variable("XDG_RUNTIME_DIR");
        path.insert(0, folder + "/");
    }
    return path;
}

} // namespace

SoundServers FindSoundServers() {
    SoundServers servers{.pipewire = PipeWireSocket(), .pulse = Variable("PULSE_SERVER")};
    std::string& pulse = servers.pulse;
    if (pulse.starts_with("unix:"))
        pulse.erase(0, 5);
    if (!pulse.empty() && !pulse.starts_with('/')) {
        pulse.clear();
        servers.pulseElsewhere = true;
        return servers;
    }
    if (pulse.empty() && !Variable("PULSE_RUNTIME_PATH").empty())
        pulse = Variable("PULSE_RUNTIME_PATH") + "/native";
    if (pulse.empty())
        pulse = Variable("XDG_RUNTIME_DIR") + "/pulse/native";
    return servers;
}

std::vector<std::string> SoundServerSockets() {
    const SoundServers servers = FindSoundServers();
    std::vector<std::string> sockets{"/run/pipewire/pipewire-0", "/run/pulse/native",
                                     "/var/run/pulse/native"};
    for (const std::string& own : {servers.pipewire, servers.pulse})
        if (!own.empty())
            sockets.push_back(own);
    return sockets;
}

} // namespace kirolane::wire
