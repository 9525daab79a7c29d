#include "contract/core/mailbox.h"

#include "contract/backend/windowsystem.h"

namespace kirolane {

void Mailbox::Post(std::function<void()> call) {
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(std::move(call));
    }
    m_windows.Wake();
}

void Mailbox::WorkerStarts() {
    const std::lock_guard lock(m_mutex);
    ++m_workers;
}

void Mailbox::WorkerDone(std::function<void()> call) {
    const std::lock_guard lock(m_mutex); // to the end: once none is under way all of this may go
    m_calls.push_back(std::move(call));
    --m_workers;
    m_windows.Wake();
    m_workerDone.notify_all();
}

int Mailbox::WorkersUnderWay() {
    const std::lock_guard lock(m_mutex);
    return m_workers;
}

void Mailbox::AwaitWorkers() {
    std::unique_lock lock(m_mutex);
    m_workerDone.wait(lock, [this] { return m_workers == 0; });
}

bool Mailbox::HasCalls() {
    const std::lock_guard lock(m_mutex);
    return !m_calls.empty();
}

void Mailbox::RunCalls() {
    std::deque<std::function<void()>> calls;
    {
        const std::lock_guard lock(m_mutex);
        calls.swap(m_calls);
    }
    for (const auto& call : calls)
        call();
}

} // namespace kirolane
