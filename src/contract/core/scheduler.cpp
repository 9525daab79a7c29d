#include "contract/core/scheduler.h"

#include "contract/core/runtime.h"
#include "contract/thread.h"

#include <algorithm>

namespace kirolane {

namespace {
/// The clock is read once per so many rounds: a reading costs more than a short turn.
constexpr int kRoundsPerReading = 16;
} // namespace

void Scheduler::Add(Thread& thread) {
    if (std::find(m_threads.begin(), m_threads.end(), &thread) == m_threads.end())
        m_threads.push_back(&thread);
}

void Scheduler::Remove(Thread& thread) {
    std::replace(m_threads.begin(), m_threads.end(), &thread, static_cast<Thread*>(nullptr));
    if (!m_inRound)
        std::erase(m_threads, nullptr);
}

bool Scheduler::HasReady() const {
    return std::any_of(m_threads.begin(), m_threads.end(),
                       [](const Thread* t) { return t != nullptr && !t->Waiting(); });
}

void Scheduler::OneTurnEach() {
    if (m_inRound || m_threads.empty())
        return;
    m_inRound = true;
    // By index: a turn may add threads, and those removed leave null behind.
    for (std::size_t i = 0; i < m_threads.size(); ++i) {
        Thread* thread = m_threads[i];
        if (thread == nullptr || thread->Waiting())
            continue;
        m_inTurn = thread;
        Runtime::Current().LetTimePass();
        if (!thread->TakeTurn())
            Remove(*thread);
        m_inTurn = nullptr;
    }
    m_inRound = false;
    std::erase(m_threads, nullptr);
}

bool Scheduler::RunSlice() {
    if (m_inRound) // a turn has put up a chooser
        return false;
    const auto end = std::chrono::steady_clock::now() + kSlice;
    do {
        for (int round = 0; round < kRoundsPerReading; ++round) {
            if (!HasReady())
                return false;
            OneTurnEach();
        }
    } while (std::chrono::steady_clock::now() < end);
    return HasReady();
}

void YieldToThreads() {
    if (!Runtime::Exists())
        return;
    Runtime::Current().Threads().OneTurnEach();
    Runtime::Current().LetTimePass();
}

} // namespace kirolane
