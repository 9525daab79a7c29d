#pragma once

#include "backends/mpv/duration_probe.h"
#include "backends/mpv/mpv_media.h"
#include "backends/mpv/player.h"
#include "backends/mpv/preparation.h"
#include "backends/mpv/shelf.h"
#include "backends/mpv/sound_return.h"
#include "wire/load_wait.h"

#include <condition_variable>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kirolane::mpv {

using wire::LoadWait;

/// Leads the players of one MpvMedia: listens to libmpv on a thread of its own, so that a busy event loop
/// delays no start, and lets those that start in one handler start together.
class Conductor {
public:
    Conductor(MpvOptions options, std::function<void()> onTurn);
    ~Conductor();
    Conductor(const Conductor&) = delete;
    Conductor& operator=(const Conductor&) = delete;

    [[nodiscard]] const MpvOptions& Options() const { return m_options; }
    [[nodiscard]] std::mutex& Mutex() const { return m_mutex; }

    void Add(Player& player);
    void Remove(Player& player);
    /// Any thread: a player has something to say.
    void Wake();
    /// Rung where a load may have been answered, or a player has a new picture.
    [[nodiscard]] const std::shared_ptr<LoadWait>& Waiting() const { return m_loadWait; }

    // Main thread.

    /// Makes the decks of the roles that have none in the background, one after the other.
    void Prepare();
    bool Load(Player& player, const LoadRequest& request);
    void Apply(std::span<const EngineOrder> orders);

    /// Under the lock: a line about a file that is playing, one for both twins.
    void TellOnce(const MediaFile& file, const std::string& cause);

    /// Destroys a deck on a thread of its own, since a file that does not answer may hold that up.
    void Bury(std::unique_ptr<Deck> deck);

private:
    struct Look {
        MediumPointer medium;
        Preparation preparation; ///< with the cause if there is no medium
    };
    struct Measurement {
        MediaFile file;
        Length length;
    };
    /// Shared with the threads of RunAside, which may outlive this.
    struct Graveyard {
        std::mutex mutex;
        std::condition_variable done;
        int underWay = 0; ///< under mutex
    };

    void Run();
    /// On a thread of its own, whose niceness libmpv's threads take after. Throws RuntimeException.
    [[nodiscard]] std::unique_ptr<Deck> MakeDeck(const PlayerRole& role) const;
    /// The deck made ready for that role, or a new one. Throws RuntimeException.
    std::unique_ptr<Deck> TakeDeck(const PlayerRole& role);
    void Furnish(Player& player);
    /// Its medium, opened, and what PrepareFile finds, within the deadline.
    Look Looked(const LoadRequest& request);
    /// Under the lock.
    void Advance(TimePoint now);
    void ShareDecoding(TimePoint now);
    [[nodiscard]] std::optional<TimePoint> NextDeadline() const;
    [[nodiscard]] Player* TwinOf(const Player& player) const;
    /// On a detached thread, since a file that does not answer may hold it up.
    void RunAside(std::function<void()> work) const;
    /// Main thread: waits for what `work` gives, on a thread that gives way to whatever plays. Nothing if it
    /// fails, or does not end in time and is left to itself; it must hold what it uses.
    template <class Result> std::optional<Result> Await(std::function<Result()> work, TimePoint deadline);
    /// The new pictures of the players that play on while a load is waited for.
    void ShowPictures();
    [[nodiscard]] bool SoundServerHangs();
    /// Before a load: where the player's sound goes. What may wait for a server that hangs is replaced.
    void SettleOutputs(Player& player, bool hangs);
    /// Under the lock: has a player that waits for such a server go on without it.
    void GoOnWithoutDevice(Player& player, TimePoint now);
    Length Measured(const MediumPointer& medium, const std::string& format, double told);
    /// Wakes whoever rests at a player that is about to change its file, or to go.
    void Forsake(const Player& lead, TimePoint now);
    void Abandon(Player& player, TimePoint now);
    /// Sets one of the twins, or both, to load the file that `player` is to hold. Returns the one whose
    /// libmpv tells whether it plays.
    Player& Open(Player& player, const Look& look, const LoadRequest& request);
    bool Fail(Player& player, const std::string& path, const std::string& cause);

    const MpvOptions m_options;
    const std::function<void()> m_onTurn; ///< called without a lock
    const std::shared_ptr<Shelf> m_shelf = std::make_shared<Shelf>();
    const std::shared_ptr<LoadWait> m_loadWait = std::make_shared<LoadWait>();

    mutable std::mutex m_mutex;
    // Under m_mutex.
    std::vector<Player*> m_players;
    unsigned m_lastGroup = 0;
    MediaFile m_toldOf;                ///< the file of the last such line
    std::optional<TimePoint> m_tidyAt; ///< something has been closed, and nothing opened since

    // The main thread's.
    std::map<std::string, std::future<std::unique_ptr<Deck>>, std::less<>> m_decks; ///< being made
    std::optional<TimePoint> m_loadDeadline; ///< of the handler that runs
    TimePoint m_takeOver{};                  ///< until then libmpv may be busy with the file before
    std::string m_lastFailure;               ///< said in this handler
    Measurement m_measured;                  ///< the file measured last

    std::mutex m_wakeMutex;
    std::condition_variable m_wakeUp;
    bool m_woken = false; ///< these two under m_wakeMutex
    bool m_quit = false;

    SoundReturn m_sound{m_options.audioOutput, [this] { Wake(); }}; ///< but for Hangs under m_mutex

    std::shared_ptr<Graveyard> m_graveyard = std::make_shared<Graveyard>();

    std::thread m_listener;
    std::jthread m_maker;
};

} // namespace kirolane::mpv
