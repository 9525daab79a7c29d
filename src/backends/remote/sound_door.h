#pragma once

#include "wire/descriptor.h"

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

struct seccomp_notif;

namespace kirolane::remote {

/// The way of a boxed engine to the sound servers, and to nothing else: its calls of connect wait here. Each
/// gets a socket that we have connected, in the place of its own, or a refusal. Never waits for anyone.
class SoundDoor {
public:
    /// `listener`: what the engine of that process number has handed over. Not open if it is anything else.
    /// `sockets`: the paths that may be connected to.
    SoundDoor(wire::Descriptor listener, pid_t engine, std::vector<std::string> sockets);

    [[nodiscard]] bool IsOpen() const { return m_listener.IsOpen(); }
    /// Readable while someone waits.
    [[nodiscard]] int Get() const { return m_listener.Get(); }
    /// Answers one who waits; false if there is none. Closes once nobody is left who could call.
    bool AnswerOne();

private:
    /// What the call is to return: 0, or an error below 0.
    [[nodiscard]] int Connect(const seccomp_notif& call) const;
    /// The path that the engine wants to be connected to. "" for what is no path.
    static std::string ReadPath(pid_t thread, std::uint64_t address, std::uint64_t size);

    wire::Descriptor m_listener;
    wire::Descriptor m_engine;
    std::vector<std::string> m_sockets;
};

} // namespace kirolane::remote
