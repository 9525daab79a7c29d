#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace kirolane::wire {

/// How the main thread waits for the answers to a load: woken by each answer, and by each picture of the
/// players that play on, which it then shows.
class LoadWait {
public:
    /// Any thread: there may be something new. Never waits.
    void Ring() {
        {
            const std::lock_guard lock(m_mutex);
            m_rung = true;
        }
        m_bell.notify_one();
    }
    /// Main thread. `done` is asked at first and after each ring, and then `show` called. False at the
    /// deadline.
    bool Until(std::chrono::steady_clock::time_point deadline, const std::function<bool()>& done,
               const std::function<void()>& show) {
        while (!done()) {
            std::unique_lock lock(m_mutex);
            if (!m_bell.wait_until(lock, deadline, [this] { return m_rung; }))
                return false;
            m_rung = false;
            lock.unlock();
            show();
        }
        return true;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_bell;
    bool m_rung = false; ///< under m_mutex
};

} // namespace kirolane::wire
