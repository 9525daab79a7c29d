#pragma once

#include "wire/descriptor.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace kirolane::remote {

/// An engine as a process. It goes with the object, and with the thread that started it.
class EngineProcess {
public:
    EngineProcess() = default;
    /// Starts that program with this end of a channel. Not there, with a cause, if it cannot be started.
    EngineProcess(const std::string& program, wire::Descriptor channel, std::string& cause);
    EngineProcess(EngineProcess&& other) noexcept;
    EngineProcess& operator=(EngineProcess&& other) noexcept;
    EngineProcess(const EngineProcess&) = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;
    ~EngineProcess();

    [[nodiscard]] bool IsThere() const { return m_process > 0; }
    [[nodiscard]] pid_t Number() const { return m_process; }
    /// A descriptor that becomes readable when it has ended; -1 if the system has none.
    [[nodiscard]] int Watch() const { return m_watch.Get(); }
    /// A debugger holds it.
    [[nodiscard]] bool IsTraced() const;
    void Kill() const;
    /// How it ended, as a phrase; nothing if it has not. It is no more there afterwards.
    std::optional<std::string> Reap();

private:
    pid_t m_process = 0;
    wire::Descriptor m_watch;
};

/// kirolane-engine beside the running program.
std::string EngineProgram();

} // namespace kirolane::remote
