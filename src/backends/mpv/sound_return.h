#pragma once

#include "backends/mpv/play_clock.h"
#include "backends/mpv/sound_devices.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace kirolane::mpv {

class Player;

/// Sound that has gone with its device, or found none at the opening, is brought back when there is one
/// again: libmpv by itself would play on in silence. While somebody plays in silence, the devices are looked
/// at once a second, on a thread of its own. libmpv is told to try only where there is something that
/// answers, since each try costs a picture, and a server that hangs would hold libmpv up for good.
class SoundReturn {
public:
    /// `outputs`: libmpv's names of them, to be tried in turn, the last of which needs no device. One alone
    /// is all that is wanted. `wake` is called on any thread when Advance has something to do.
    SoundReturn(std::string outputs, std::function<void()> wake);
    ~SoundReturn();
    SoundReturn(const SoundReturn&) = delete;
    SoundReturn& operator=(const SoundReturn&) = delete;

    // Any thread.

    /// There are devices to look at.
    [[nodiscard]] bool Needed() const { return m_outputs.find(',') != std::string::npos; }
    /// At the last look; nobody is to go near its device.
    [[nodiscard]] bool ServerHangs() const;
    /// Someone else has looked.
    void Take(const SoundDevices& devices);

    // The conductor's, under its lock.

    /// To be called when the deadline has come and after each message. Gives the players that a server holds
    /// up, which have to go on without it.
    [[nodiscard]] std::vector<Player*> Advance(std::span<Player* const> players, TimePoint now);
    [[nodiscard]] std::optional<TimePoint> Deadline() const { return m_deadline; }

private:
    void Run();
    void Ask();
    std::optional<SoundDevices> TakeAnswer();
    void TakeSoundUp(std::span<Player* const> players, const SoundDevices& devices, TimePoint now);

    const std::string m_outputs;
    const std::function<void()> m_wake;

    // The conductor's.
    bool m_silent = false; ///< someone plays in silence
    bool m_told = false;   ///< that sound is lost
    std::optional<TimePoint> m_nextLook;
    std::optional<TimePoint> m_deadline;
    std::optional<SoundDevices> m_triedWith; ///< in vain, as far as is known
    TimePoint m_tried;
    std::chrono::seconds m_tryAgain{}; ///< after that

    mutable std::mutex m_mutex;
    std::condition_variable m_asked;
    // Under m_mutex.
    bool m_ask = false;
    bool m_quit = false;
    bool m_hangs = false;
    std::optional<SoundDevices> m_answer; ///< not yet taken

    std::thread m_looker;
};

} // namespace kirolane::mpv
