#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

namespace kirolane::tests {

/// Holds up whoever comes by while it is closed.
class Gate {
public:
    ~Gate() { Open(); }

    /// For what has that in its name; "" for all.
    void Close(const std::string& part = "") {
        const std::lock_guard lock(m_mutex);
        m_part = part;
        m_closed = true;
    }
    /// Everybody who waited has then gone on.
    void Open() {
        std::unique_lock lock(m_mutex);
        m_closed = false;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_waiting == 0; });
    }
    /// Lets the first so many of all that it has held up go on.
    void LetPass(int first) {
        const std::lock_guard lock(m_mutex);
        m_letPass = first;
        m_changed.notify_all();
    }
    /// So many come to wait, within 10 s.
    bool Holds(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(10), [&] { return m_waiting >= count; });
    }
    void Pass(const std::string& name = "") {
        std::unique_lock lock(m_mutex);
        if (!m_closed || name.find(m_part) == std::string::npos)
            return;
        const int number = ++m_came;
        ++m_waiting;
        m_changed.notify_all();
        m_changed.wait(lock, [&] { return !m_closed || number <= m_letPass; });
        --m_waiting;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_part;
    bool m_closed = false;
    int m_came = 0;
    int m_waiting = 0;
    int m_letPass = 0;
};

} // namespace kirolane::tests
