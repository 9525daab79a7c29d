#pragma once

#include "backends/remote/group.h"
#include "backends/remote/remote_media.h"
#include "wire/load_wait.h"

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kirolane::remote {

/// A player, as the supervisor finds it.
struct Place {
    Group* group = nullptr;
    Seat* seat = nullptr;
    unsigned index = 0;
};

/// Starts the engines, listens to them on a thread of its own, and replaces those that end or hang. That
/// thread lives as long as all engines may: they die with the thread that started them.
class Supervisor {
public:
    explicit Supervisor(RemoteOptions options);
    ~Supervisor();
    Supervisor(const Supervisor&) = delete;
    Supervisor& operator=(const Supervisor&) = delete;

    struct SeatOrder {
        Place place;
        PlayerOrder order;
    };

    // Main thread; see MediaEngine and PlayerEngine.

    Place Add(std::string_view path);
    void Remove(const Place& place);
    void Prepare();
    bool Load(const Place& place, const std::string& nativePath);
    void Release(const Place& place);
    void Apply(std::span<const SeatOrder> orders);
    [[nodiscard]] double Duration(const Place& place) const;
    [[nodiscard]] double Position(const Place& place, TimePoint at) const;
    [[nodiscard]] bool AtEnd(const Place& place) const;

private:
    static constexpr const char* kTakesNothing = "it takes no orders";

    /// An engine that has ended, or is about to.
    struct Corpse {
        EngineProcess process;
        std::string line; ///< to be told with how it ended; "" for nothing
        TimePoint toldBy;
    };

    // The supervisor's thread.
    void Run();
    /// Waits for something to do. How much too late it has been woken, 0 for in time.
    Clock::duration Listen();
    void Wake() const;
    /// Under the lock, as all below.
    void Tend(TimePoint now);
    [[nodiscard]] std::optional<TimePoint> NextDeadline() const;
    [[nodiscard]] std::vector<EngineLink*> Links() const;
    /// Null for the spare.
    [[nodiscard]] Group* GroupOf(const EngineLink& link) const;
    void Drain(EngineLink& link, TimePoint now);
    /// False for a message that no engine of ours sends.
    bool Take(EngineLink& link, wire::Packet& packet, TimePoint now);
    /// The same gap in all engines' boxes is one line.
    void TellMissing(const std::string& missing);
    bool TakeLoaded(Group& group, EngineLink& link, const wire::Loaded& loaded, TimePoint now);
    /// It is of no use any more; `why` is "" if it has ended by itself.
    void End(EngineLink& link, const std::string& why, TimePoint now);
    /// What its players had goes on, or not. The line to be told.
    std::string TakeLoss(Group& group, const wire::Board& board, TimePoint now);
    void CountIdleEnd(TimePoint now);
    void Bury(EngineProcess process, std::string line, TimePoint now);
    void Reap(TimePoint now);
    void Furnish(Group& group, TimePoint now);
    /// An engine is missing, and may be started.
    [[nodiscard]] bool WantsEngine(TimePoint now) const;
    void StartEngine(TimePoint now);
    /// False if its engine takes nothing more.
    static bool TellReturned(Group& group, bool returned);

    /// What a reading has found is told.
    void TellReturn(Seat& seat) const;

    // The loading, on the main thread.
    std::shared_ptr<const wire::Medium> Opened(const std::string& path, std::string& cause);
    bool Fail(const Place& place, const std::string& path, const std::string& cause);
    void ShowPictures() const;
    Group& GroupFor(const wire::PlayerRole& role);

    const RemoteOptions m_options;
    const std::string m_program;
    const std::shared_ptr<wire::LoadWait> m_wait = std::make_shared<wire::LoadWait>();
    wire::Descriptor m_wake;

    mutable std::mutex m_mutex;
    // Under m_mutex.
    std::vector<std::unique_ptr<Group>> m_groups;
    std::unique_ptr<EngineLink> m_spare;
    std::vector<Corpse> m_corpses;
    mutable std::vector<std::shared_ptr<RemoteFrames>> m_toTell; ///< that something of theirs has changed
    std::deque<TimePoint> m_idleEnds;                            ///< of engines without a file
    std::optional<TimePoint> m_noStartBefore;
    std::string m_startFailure; ///< told last
    std::string m_missing;      ///< of a box; told last
    std::string m_refused;      ///< the file that ended its engine in this handler
    bool m_prepared = false;
    bool m_quit = false;

    // The main thread's, of the handler that runs.
    std::optional<TimePoint> m_loadDeadline;
    std::shared_ptr<const wire::Medium> m_opened; ///< last
    std::string m_lastFailure;

    std::thread m_thread;
};

} // namespace kirolane::remote
