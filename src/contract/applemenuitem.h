#pragma once

#include "contract/menuitem.h"

namespace kirolane {

/// The about command, which some desktops move to the application's menu.
class AppleMenuItem : public MenuItem {
public:
    using MenuItem::MenuItem;

    [[nodiscard]] MenuRole Role() const override { return MenuRole::About; }
    [[nodiscard]] std::shared_ptr<MenuItem> Clone() const override {
        auto copy = std::make_shared<AppleMenuItem>(Name());
        copy->Take(*this);
        return copy;
    }
};

} // namespace kirolane
