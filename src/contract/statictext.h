#pragma once

#include "contract/rectcontrol.h"

namespace kirolane {

/// A label. `Caption` and `Text` are two names of the one displayed string.
class StaticText : public RectControl {
public:
    StaticText(class Window& window, const ControlDesign& design);

    [[nodiscard]] const std::string& Caption() const { return m_text; }
    void SetCaption(std::string text);
    [[nodiscard]] const std::string& Text() const { return m_text; }
    void SetText(std::string text) { SetCaption(std::move(text)); }

private:
    std::string m_text;
};

} // namespace kirolane
