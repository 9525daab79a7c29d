#pragma once

#include "contract/menubar.h"

#include <memory>

namespace kirolane {

struct MenuTable;

/// The one menu bar of the program. Each window that shows it has a copy with items of its own, so this
/// object stays as it was built.
class Menu : public MenuBar {
public:
    Menu();

    /// The bar, made at first use.
    static const std::shared_ptr<Menu>& Instance();

private:
    void Build(const MenuTable& table);
};

} // namespace kirolane
