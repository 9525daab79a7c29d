#pragma once

#include "contract/menuitem.h"

namespace kirolane {

/// The contract's own quit: without a handler in the front window it ends the program.
class QuitMenuItem : public MenuItem {
public:
    using MenuItem::MenuItem;

    [[nodiscard]] MenuRole Role() const override { return MenuRole::Quit; }
    [[nodiscard]] std::shared_ptr<MenuItem> Clone() const override {
        auto copy = std::make_shared<QuitMenuItem>(Name());
        copy->Take(*this);
        return copy;
    }
};

} // namespace kirolane
