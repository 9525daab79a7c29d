#include "platform/menubar.h"
#include "platform/window.h"

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

void MenuItem::SetKeyboardShortcut(std::string shortcut) {
    m_shortcut = std::move(shortcut);
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

namespace {
void Visit(const std::vector<std::shared_ptr<MenuItem>>& items, const std::function<void(MenuItem&)>& visit) {
    for (const auto& item : items) {
        visit(*item);
        Visit(item->Children(), visit);
    }
}

std::shared_ptr<MenuItem> FindIn(const std::vector<std::shared_ptr<MenuItem>>& items, std::string_view name) {
    for (const auto& item : items) {
        if (item->Name() == name)
            return item;
        if (auto found = FindIn(item->Children(), name))
            return found;
    }
    return nullptr;
}
} // namespace

Ref<MenuItem> MenuBar::Item(std::string_view name) const {
    return Ref<MenuItem>(FindIn(m_menus, name));
}

void MenuBar::ForEach(const std::function<void(MenuItem&)>& visit) const {
    Visit(m_menus, visit);
}

std::shared_ptr<MenuBar> MenuBar::Clone() const {
    auto copy = std::make_shared<MenuBar>();
    for (const auto& menu : m_menus)
        copy->Append(menu->Clone());
    return copy;
}

} // namespace kirolane
