#pragma once

#include "contract/rectcontrol.h"

#include <string>
#include <vector>

namespace kirolane {

/// A choice of one row out of several.
class PopupMenu : public RectControl {
public:
    PopupMenu(class Window& window, const ControlDesign& design);

    void AddRow(std::string text);
    [[nodiscard]] const std::vector<std::string>& Rows() const { return m_rows; }
    /// Zero-based choice, -1 for none. Outside the rows counts as -1. Fires Change only if it differs.
    [[nodiscard]] std::int32_t ListIndex() const { return m_listIndex; }
    void SetListIndex(std::int32_t index);

    std::function<void()> OnChange;

    /// A person chose a row; fires Change if it differs.
    void ReportChoice(std::int32_t index);

private:
    std::vector<std::string> m_rows;
    std::int32_t m_listIndex = -1;
};

} // namespace kirolane
