#include "contract/menubar.h"

namespace kirolane {

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
