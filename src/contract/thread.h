#pragma once

#include "contract/control.h"
#include "contract/task.h"

#include <functional>
#include <optional>

namespace kirolane {

/// A cooperative thread. It runs on the main flow only where the running code yields, and from the idle loop
/// in slices of about 2 ms. A failure in its body ends this thread alone and is written to standard error.
class Thread : public Control {
public:
    Thread(class Window& window, const ControlDesign& design);
    ~Thread() override;

    /// Makes the body ready; its first turn comes at the next yield. Throws ThreadAlreadyRunningException
    /// while it runs.
    void Run();
    /// Ends the body where it is suspended. Nothing if it is not running.
    void Kill();
    [[nodiscard]] bool Running() const { return m_body.has_value(); }

    /// The Run event: the body.
    std::function<Task()> OnRun;

    /// One turn, given by the scheduler. True if the body goes on.
    bool TakeTurn();
    /// A body that waits for a worker takes no turns until it is resumed.
    void SetWaiting(bool waiting);
    [[nodiscard]] bool Waiting() const { return m_waiting; }

private:
    std::optional<Task> m_body;
    bool m_waiting = false;
    bool m_inTurn = false;
    bool m_killed = false;
};

} // namespace kirolane
