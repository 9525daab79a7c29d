#pragma once

#include "contract/control_design.h"

#include <string>

namespace kirolane {

class Window;

/// Anything that a form holds by name, seen or not.
class Control {
public:
    Control(class Window& window, const ControlDesign& design);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// The row of the form's table that this control was made from; lives as long as the process.
    [[nodiscard]] const ControlDesign& Design() const { return m_design; }
    [[nodiscard]] class Window& Window() const { return m_window; }
    /// The form's name and the control's, as in "MonitorForm.QTM": what failures and players are known by.
    [[nodiscard]] std::string Path() const;

private:
    class Window& m_window;
    const ControlDesign& m_design;
    std::string m_name;
};

} // namespace kirolane
