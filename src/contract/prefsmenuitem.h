#pragma once

#include "contract/menuitem.h"

namespace kirolane {

/// The preferences command, which some desktops move to the application's menu.
class PrefsMenuItem : public MenuItem {
public:
    using MenuItem::MenuItem;

    [[nodiscard]] MenuRole Role() const override { return MenuRole::Preferences; }
    [[nodiscard]] std::shared_ptr<MenuItem> Clone() const override {
        auto copy = std::make_shared<PrefsMenuItem>(Name());
        copy->Take(*this);
        return copy;
    }
};

} // namespace kirolane
