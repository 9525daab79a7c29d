#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A button with a pressed look of its own. A click does not change the look; only a write of Value does.
class BevelButton : public RectControl {
public:
    BevelButton(class Window& window, const ControlDesign& design);

    [[nodiscard]] const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string caption);
    /// The pressed look. A write fires nothing.
    [[nodiscard]] bool Value() const { return m_value; }
    void SetValue(bool pressed);

    std::function<void()> OnAction;

    /// A click. Nothing happens on a disabled button.
    void ReportClick();

private:
    std::string m_caption;
    bool m_value = false;
};

} // namespace kirolane
