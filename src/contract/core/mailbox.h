#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace kirolane {

class WindowSystem;

/// What other threads want done on the main thread, and how many workers are still going to want it.
class Mailbox {
public:
    /// `windows` is woken for each call.
    explicit Mailbox(WindowSystem& windows) : m_windows(windows) {}

    /// Any thread: runs the call on the main thread, outside any delivery.
    void Post(std::function<void()> call);
    /// A worker of the contract's own begins. AwaitWorkers waits for those under way.
    void WorkerStarts();
    /// Worker: it is done, and `call` is to be run on the main thread. The worker's last use of the contract.
    void WorkerDone(std::function<void()> call);
    /// How many.
    [[nodiscard]] int WorkersUnderWay();
    /// Main thread: until each worker has told that it is done.
    void AwaitWorkers();

    [[nodiscard]] bool HasCalls();
    /// Main thread: those posted so far, in order; what they post waits for the next time.
    void RunCalls();

private:
    WindowSystem& m_windows;
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_calls;
    std::condition_variable m_workerDone;
    int m_workers = 0;
};

} // namespace kirolane
