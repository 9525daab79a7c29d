#pragma once

#include <coroutine>
#include <exception>
#include <utility>

namespace kirolane {

/// The body of a cooperative thread: a coroutine that runs only in the turns its thread is given. Destroying
/// the task ends the body at its suspension point.
class Task {
public:
    struct promise_type {
        std::exception_ptr failure;

        Task get_return_object() { return Task(std::coroutine_handle<promise_type>::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        std::suspend_always final_suspend() noexcept { return {}; }
        void return_void() {}
        void unhandled_exception() { failure = std::current_exception(); }
    };

    Task() = default;
    Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
    Task& operator=(Task&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() {
        if (m_handle)
            m_handle.destroy();
    }

    [[nodiscard]] bool Done() const { return !m_handle || m_handle.done(); }
    /// Runs the body to its next suspension. Rethrows what the body let out.
    void Resume() {
        m_handle.resume();
        if (m_handle.done() && m_handle.promise().failure)
            std::rethrow_exception(std::exchange(m_handle.promise().failure, nullptr));
    }

private:
    explicit Task(std::coroutine_handle<promise_type> handle) : m_handle(handle) {}

    std::coroutine_handle<promise_type> m_handle;
};

/// `co_await Yield()` ends the turn of a cooperative thread; the next comes from the scheduler.
class Yield {
public:
    Yield() = default;
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<>) const noexcept {}
    void await_resume() const noexcept {}
};

/// Gives every thread that is ready one turn: the yield of handlers, at the end of each pass of their loops.
/// Within a thread's own turn it does nothing.
void YieldToThreads();

} // namespace kirolane
