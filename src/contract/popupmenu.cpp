#include "contract/popupmenu.h"

#include "contract/core/runtime.h"

namespace kirolane {

PopupMenu::PopupMenu(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

void PopupMenu::AddRow(std::string text) {
    m_rows.push_back(std::move(text));
    Changed();
}

void PopupMenu::SetListIndex(std::int32_t index) {
    const bool inside = index >= 0 && index < static_cast<std::int32_t>(m_rows.size());
    const std::int32_t chosen = inside ? index : -1;
    if (chosen == m_listIndex)
        return;
    m_listIndex = chosen;
    Changed();
    if (OnChange)
        OnChange();
}

void PopupMenu::ReportChoice(std::int32_t index) {
    Runtime::Current().Deliver(Window(), Path() + " Change", [this, index] { SetListIndex(index); });
}

} // namespace kirolane
