#include "contract/rectcontrol.h"

#include "contract/core/runtime.h"
#include "contract/window.h"

#include <algorithm>

namespace kirolane {

RectControl::RectControl(class Window& window, const ControlDesign& design)
    : Control(window, design), m_rect(design.rect), m_visible(design.visible), m_enabled(design.enabled) {}

void RectControl::SetLeft(std::int32_t left) {
    m_rect.left = left;
    Changed();
}

void RectControl::SetTop(std::int32_t top) {
    m_rect.top = top;
    Changed();
}

void RectControl::SetWidth(std::int32_t width) {
    m_rect.width = std::max(width, 0);
    Changed();
}

void RectControl::SetHeight(std::int32_t height) {
    m_rect.height = std::max(height, 0);
    Changed();
}

void RectControl::SetVisible(bool visible) {
    m_visible = visible;
    Changed();
}

void RectControl::SetEnabled(bool enabled) {
    m_enabled = enabled;
    Changed();
}

void RectControl::SetHelpTag(const std::string& tag) {
    m_helpTag = tag;
    Changed();
}

void RectControl::SetFocus() {
    Window().m_focus = this;
    Window().Changed();
}

void RectControl::Refresh(bool /*eraseBackground*/) {
    Changed();
}

bool RectControl::ReportMouseDown(std::int32_t x, std::int32_t y) {
    bool kept = false;
    if (m_enabled && OnMouseDown)
        Runtime::Current().DeliverNow(Window(), Path() + " MouseDown", [&] { kept = OnMouseDown(x, y); });
    return kept;
}

void RectControl::ReportMouseUp(std::int32_t x, std::int32_t y) {
    if (m_enabled && OnMouseUp)
        Runtime::Current().Deliver(Window(), Path() + " MouseUp", [this, x, y] { OnMouseUp(x, y); });
}

void RectControl::ReportMouseMove(std::int32_t x, std::int32_t y, std::int32_t windowY) {
    if (!m_enabled || !OnMouseMove)
        return;
    Runtime::Current().Deliver(Window(), Path() + " MouseMove", [this, x, y, windowY] {
        Window().m_mouseY = windowY;
        OnMouseMove(x, y);
    });
}

void RectControl::Fire(const char* event, const std::function<void()>& handler) const {
    if (handler)
        Runtime::Current().Deliver(Window(), Path() + " " + event, handler);
}

void RectControl::Changed() {
    if (!m_marked)
        Window().MarkControl(*this);
}

} // namespace kirolane
