#include "contract/menuitem.h"

#include "contract/window.h"

namespace kirolane {

MenuItem::MenuItem(std::string name, std::string text, std::string shortcut)
    : m_name(std::move(name)), m_text(std::move(text)), m_shortcut(std::move(shortcut)) {}

std::shared_ptr<MenuItem> MenuItem::Clone() const {
    auto copy = std::make_shared<MenuItem>(m_name);
    copy->Take(*this);
    return copy;
}

void MenuItem::Take(const MenuItem& other) {
    m_text = other.m_text;
    m_shortcut = other.m_shortcut;
    m_enabled = other.m_enabled;
    m_autoEnable = other.m_autoEnable;
    m_visible = other.m_visible;
    m_repeats = other.m_repeats;
    for (const auto& child : other.m_children)
        m_children.push_back(child->Clone());
}

void MenuItem::Append(std::shared_ptr<MenuItem> child) {
    m_children.push_back(std::move(child));
}

void MenuItem::SetText(std::string text) {
    m_text = std::move(text);
    Changed();
}

void MenuItem::SetEnabled(bool enabled) {
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Changed();
}

void MenuItem::SetAutoEnable(bool automatic) {
    m_autoEnable = automatic;
    Changed();
}

void MenuItem::SetVisible(bool visible) {
    m_visible = visible;
    Changed();
}

void MenuItem::SetRepeats(bool repeats) {
    m_repeats = repeats;
    Changed();
}

void MenuItem::Changed() {
    if (m_owner != nullptr)
        m_owner->Changed();
}

} // namespace kirolane
