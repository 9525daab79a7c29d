#pragma once

#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kirolane::bench {

/// A sound server of the measurement's own, which plays into nothing at the pace of the clock.
class SoundServer {
public:
    /// Its socket lies in that folder.
    explicit SoundServer(const std::string& folder);
    ~SoundServer() { Stop(); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// As PULSE_SERVER has it.
    [[nodiscard]] const std::string& Address() const { return m_address; }
    void Start();
    /// As if it had crashed.
    void Stop();

private:
    std::string m_address;
    pid_t m_process = 0;
};

/// Hears what that server plays, by its monitor.
class Ear {
public:
    /// Waits until it hears. Throws after 10 s.
    explicit Ear(const std::string& address);
    ~Ear();
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    /// When beeps have begun since the last call, in milliseconds of the steady clock: when they were to come
    /// out of the loudspeaker. The server says that of its monitor as it does of what is played.
    std::vector<double> Take();

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

/// The steady clock.
double SteadyMilliseconds();

} // namespace kirolane::bench
