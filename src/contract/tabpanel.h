#pragma once

#include "contract/rectcontrol.h"

#include <string>
#include <vector>

namespace kirolane {

/// Pages with a tab each. Controls of a page show only with that page.
class TabPanel : public RectControl {
public:
    TabPanel(class Window& window, const ControlDesign& design);

    [[nodiscard]] const std::vector<std::string>& Tabs() const { return m_tabs; }
    /// The page in front, zero-based.
    [[nodiscard]] std::int32_t Value() const { return m_value; }
    /// Clamped to the pages. Fires Change only if the page differs.
    void SetValue(std::int32_t page);

    std::function<void()> OnChange;

    /// A person chose a page.
    void ReportPage(std::int32_t page);

private:
    std::vector<std::string> m_tabs;
    std::int32_t m_value;
};

} // namespace kirolane
