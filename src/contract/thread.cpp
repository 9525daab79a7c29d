#include "contract/thread.h"

#include "contract/core/runtime.h"
#include "contract/exceptions.h"

namespace kirolane {

Thread::Thread(class Window& window, const ControlDesign& design) : Control(window, design) {}

Thread::~Thread() {
    if (Runtime::Exists())
        Runtime::Current().Threads().Remove(*this);
}

void Thread::Run() {
    if (m_body.has_value())
        throw ThreadAlreadyRunningException();
    if (!OnRun)
        return;
    m_killed = false;
    m_waiting = false;
    m_body.emplace(OnRun());
    auto& runtime = Runtime::Current();
    runtime.Threads().Add(*this);
    runtime.Windows().RequestIdle();
}

void Thread::Kill() {
    if (!m_body.has_value())
        return;
    if (m_inTurn) { // by its own hand: ends at its next suspension
        m_killed = true;
        return;
    }
    m_body.reset();
    m_waiting = false;
    Runtime::Current().Threads().Remove(*this);
}

bool Thread::TakeTurn() {
    if (!m_body.has_value())
        return false;
    const Failures::Scope own(Runtime::Current().Failures());
    m_inTurn = true;
    try {
        m_body->Resume();
    } catch (const std::exception& failure) {
        Runtime::Current().Failures().Report(Path() + " Run", failure.what());
        m_killed = true;
    }
    m_inTurn = false;
    if (!m_killed && !m_body->Done())
        return true;
    m_body.reset();
    m_waiting = false;
    return false;
}

void Thread::SetWaiting(bool waiting) {
    m_waiting = waiting;
    if (!waiting && m_body.has_value())
        Runtime::Current().Windows().RequestIdle();
}

} // namespace kirolane
