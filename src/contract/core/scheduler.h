#pragma once

#include <chrono>
#include <vector>

namespace kirolane {

class Thread;

/// Gives the cooperative threads their turns, one after another.
class Scheduler {
public:
    /// Long enough to matter, short enough that no event waits noticeably.
    static constexpr std::chrono::milliseconds kSlice{2};

    void Add(Thread& thread);
    void Remove(Thread& thread);

    [[nodiscard]] bool HasReady() const;
    /// One turn for every thread that is ready. Nothing from within a turn.
    void OneTurnEach();
    /// The thread whose turn it is, null outside a turn.
    [[nodiscard]] Thread* InTurn() const { return m_inTurn; }
    /// Rounds of turns for the length of a slice. True if a thread is still ready.
    bool RunSlice();

private:
    std::vector<Thread*> m_threads; ///< null where a thread left during a round
    Thread* m_inTurn = nullptr;
    bool m_inRound = false;
};

} // namespace kirolane
