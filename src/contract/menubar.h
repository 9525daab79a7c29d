#pragma once

#include "contract/menuitem.h"
#include "contract/ref.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace kirolane {

/// A menu bar: its top-level menus in order, each with its items.
class MenuBar {
public:
    virtual ~MenuBar() = default;

    void Append(std::shared_ptr<MenuItem> menu) { m_menus.push_back(std::move(menu)); }
    [[nodiscard]] const std::vector<std::shared_ptr<MenuItem>>& Menus() const { return m_menus; }

    /// The item or menu of that name at any depth, nil if there is none.
    [[nodiscard]] Ref<MenuItem> Item(std::string_view name) const;
    /// Calls visit for every item, menus before their children.
    void ForEach(const std::function<void(MenuItem&)>& visit) const;
    /// A bar with items of its own.
    [[nodiscard]] std::shared_ptr<MenuBar> Clone() const;

private:
    std::vector<std::shared_ptr<MenuItem>> m_menus;
};

} // namespace kirolane
