#pragma once

#include "contract/control.h"

#include <functional>
#include <memory>

namespace kirolane {

class TimerPeer;

/// Fires Action on the main thread about every Period, from its creation on if its Mode is 2. Action never
/// enters itself; a period missed while a handler runs is not made up for.
class Timer : public Control {
public:
    Timer(class Window& window, const ControlDesign& design);
    ~Timer() override;

    [[nodiscard]] std::int32_t Period() const { return Design().period; } ///< milliseconds
    [[nodiscard]] std::int32_t Mode() const { return Design().mode; }     ///< 0 off, 2 repeating

    std::function<void()> OnAction;

    /// A period has passed.
    void ReportDue();

private:
    std::unique_ptr<TimerPeer> m_peer;
};

} // namespace kirolane
