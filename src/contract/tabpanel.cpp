#include "contract/tabpanel.h"

#include "contract/core/runtime.h"

#include <algorithm>

namespace kirolane {

TabPanel::TabPanel(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value) {
    for (std::string_view rest = design.text; !rest.empty();) {
        const auto end = std::min(rest.find('\n'), rest.size());
        m_tabs.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

void TabPanel::SetValue(std::int32_t page) {
    const std::int32_t last = std::max(static_cast<std::int32_t>(m_tabs.size()) - 1, 0);
    const std::int32_t clamped = std::clamp(page, 0, last);
    if (clamped == m_value)
        return;
    m_value = clamped;
    Changed();
    if (OnChange)
        OnChange();
}

void TabPanel::ReportPage(std::int32_t page) {
    Runtime::Current().Deliver(Window(), Path() + " Change", [this, page] { SetValue(page); });
}

} // namespace kirolane
