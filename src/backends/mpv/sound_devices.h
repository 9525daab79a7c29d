#pragma once

#include <chrono>
#include <cstdint>

namespace kirolane::mpv {

/// What became of a word to a sound server.
enum class ServerState : std::uint8_t {
    Gone, ///< nobody listens there
    Answers,
    Hangs, ///< it is there, and does not answer
};

/// What sound could be played on now.
struct SoundDevices {
    ServerState pipewire = ServerState::Gone;
    ServerState pulse = ServerState::Gone;
    int outputs = 0; ///< of the sound cards, as the kernel counts them

    bool operator==(const SoundDevices&) const = default;
    [[nodiscard]] bool There() const {
        return outputs > 0 || pipewire == ServerState::Answers || pulse == ServerState::Answers;
    }
    /// libmpv would wait for it without end.
    [[nodiscard]] bool Hang() const { return pipewire == ServerState::Hangs || pulse == ServerState::Hangs; }
};

/// A server that is well answers within a millisecond.
constexpr std::chrono::milliseconds kServerPatience{500};

/// Looks where the libraries of the sound servers would look, but not by them: they wait for an answer for
/// half a minute and more. A server on another machine is taken to answer. Any thread.
SoundDevices LookForSoundDevices(std::chrono::milliseconds limit);

} // namespace kirolane::mpv
