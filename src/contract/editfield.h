#pragma once

#include "contract/rectcontrol.h"

#include <string>

namespace kirolane {

/// One line of plain text.
class EditField : public RectControl {
public:
    EditField(class Window& window, const ControlDesign& design);

    [[nodiscard]] const std::string& Text() const { return m_text; }
    /// Fires nothing. Bytes are kept as they are; what is not UTF-8 is only shown otherwise.
    void SetText(std::string text);

    /// A person typed.
    void ReportText(std::string text);

private:
    std::string m_text;
};

} // namespace kirolane
