// The controls whose whole behaviour is a value or two and an event.

#include "platform/bevelbutton.h"
#include "platform/canvas.h"
#include "platform/checkbox.h"
#include "platform/common/runtime.h"
#include "platform/editfield.h"
#include "platform/groupbox.h"
#include "platform/popupmenu.h"
#include "platform/progressbar.h"
#include "platform/pushbutton.h"
#include "platform/rectangle.h"
#include "platform/slider.h"
#include "platform/statictext.h"
#include "platform/tabpanel.h"
#include "platform/updownarrows.h"

#include <algorithm>

namespace kirolane {

namespace {
void Fire(const RectControl& control, const char* event, const std::function<void()>& handler) {
    if (handler)
        Runtime::Current().Deliver(control.Window(), control.Path() + " " + event, handler);
}
} // namespace

StaticText::StaticText(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_text(design.text) {}

void StaticText::SetCaption(std::string text) {
    m_text = std::move(text);
    Changed();
}

Slider::Slider(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value), m_maximum(design.maximum) {}

void Slider::SetValue(std::int32_t value) {
    m_value = std::clamp(value, Minimum(), m_maximum);
    Changed();
    if (OnValueChanged)
        OnValueChanged();
}

void Slider::SetMaximum(std::int32_t maximum) {
    m_maximum = std::max(maximum, Minimum());
    m_value = std::min(m_value, m_maximum);
    Changed();
}

void Slider::ReportValue(std::int32_t value) {
    if (!Enabled())
        return;
    Runtime::Current().Deliver(Window(), Path() + " ValueChanged", [this, value] { TakeValue(value); });
}

void Slider::ReportPressAndValue(std::int32_t x, std::int32_t y, std::int32_t value) {
    if (!Enabled())
        return;
    Runtime::Current().Deliver(Window(), Path() + " MouseDown", [this, x, y, value] {
        if (OnMouseDown && OnMouseDown(x, y))
            Changed();
        else
            TakeValue(value);
    });
}

void Slider::TakeValue(std::int32_t value) {
    const std::int32_t clamped = std::clamp(value, Minimum(), m_maximum);
    Changed(); // shows the value held, whatever the person's hand left on the screen
    if (clamped == m_value)
        return;
    m_value = clamped;
    if (OnValueChanged)
        OnValueChanged();
}

ProgressBar::ProgressBar(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value) {}

void ProgressBar::SetValue(std::int32_t value) {
    m_value = std::clamp(value, 0, Maximum());
    Changed();
}

BevelButton::BevelButton(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_caption(design.text) {}

void BevelButton::SetCaption(std::string caption) {
    m_caption = std::move(caption);
    Changed();
}

void BevelButton::SetValue(bool pressed) {
    m_value = pressed;
    Changed();
}

void BevelButton::ReportClick() {
    if (Enabled())
        Fire(*this, "Action", OnAction);
}

PushButton::PushButton(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

void PushButton::ReportClick() {
    if (Enabled())
        Fire(*this, "Action", OnAction);
}

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

GroupBox::GroupBox(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

Rectangle::Rectangle(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

Canvas::Canvas(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_backdrop(design.picture) {}

void Canvas::SetBackdrop(std::string picture) {
    m_backdrop = std::move(picture);
    Changed();
}

EditField::EditField(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_text(design.text) {}

void EditField::SetText(std::string text) {
    m_text = std::move(text);
    Changed();
}

void EditField::ReportText(std::string text) {
    if (Enabled())
        m_text = std::move(text);
}

CheckBox::CheckBox(class Window& window, const ControlDesign& design)
    : RectControl(window, design), m_value(design.value != 0) {}

void CheckBox::SetValue(bool on) {
    if (on == m_value)
        return;
    m_value = on;
    Changed();
    if (OnAction)
        OnAction();
}

void CheckBox::ReportClick() {
    if (Enabled())
        Runtime::Current().Deliver(Window(), Path() + " Action", [this] { SetValue(!m_value); });
}

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

UpDownArrows::UpDownArrows(class Window& window, const ControlDesign& design) : RectControl(window, design) {}

void UpDownArrows::ReportUp() {
    Fire(*this, "Up", OnUp);
}

void UpDownArrows::ReportDown() {
    Fire(*this, "Down", OnDown);
}

} // namespace kirolane
