#include "wire/sound_servers.h"

#include <cstdlib>
#include <fstream>

#include <unistd.h>

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

constexpr const char* kPulseOfTheMachine = "/run/pulse/native";

/// Where the server listens that nobody has named, by libpulse's own order.
std::string PulseSocket() {
    std::string folder = Variable("PULSE_RUNTIME_PATH");
    if (folder.empty() && !Variable("XDG_RUNTIME_DIR").empty())
        folder = Variable("XDG_RUNTIME_DIR") + "/pulse";
    if (folder.empty()) { // a session without: a link to a folder of any name
        std::string machine;
        for (const char* file : {"/etc/machine-id", "/var/lib/dbus/machine-id"})
            if (machine.empty())
                std::ifstream(file) >> machine;
        folder = Variable("HOME") + "/.config/pulse/" + machine + "-runtime";
    }
    const std::string path = folder + "/native";
    const bool machines = access(path.c_str(), F_OK) != 0 && access(kPulseOfTheMachine, F_OK) == 0;
    return machines ? kPulseOfTheMachine : path;
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
    if (pulse.empty())
        pulse = PulseSocket();
    return servers;
}

std::vector<std::string> SoundServerSockets() {
    const SoundServers servers = FindSoundServers();
    std::vector<std::string> sockets{"/run/pipewire/pipewire-0", kPulseOfTheMachine, "/var/run/pulse/native"};
    for (const std::string& own : {servers.pipewire, servers.pulse})
        if (!own.empty())
            sockets.push_back(own);
    return sockets;
}

void NamePulseServer() {
    const SoundServers servers = FindSoundServers();
    if (!servers.pulseElsewhere)
        setenv("PULSE_SERVER", ("unix:" + servers.pulse).c_str(),
               1); // NOLINT(concurrency-mt-unsafe): one thread
}

} // namespace kirolane::wire
