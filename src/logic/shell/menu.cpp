#include "logic/shell/menu.h"

#include "contract/applemenuitem.h"
#include "contract/prefsmenuitem.h"
#include "contract/quitmenuitem.h"
#include "logic/shell/menu_table.h"

#include <string>

namespace kirolane {

namespace {

std::shared_ptr<MenuItem> MakeItem(const MenuRow& row) {
    std::string name(row.name);
    std::string text(row.text);
    std::string shortcut(row.shortcut);
    switch (row.role) {
    case MenuRole::About:
        return std::make_shared<AppleMenuItem>(std::move(name), std::move(text), std::move(shortcut));
    case MenuRole::Preferences:
        return std::make_shared<PrefsMenuItem>(std::move(name), std::move(text), std::move(shortcut));
    case MenuRole::Quit:
        return std::make_shared<QuitMenuItem>(std::move(name), std::move(text), std::move(shortcut));
    case MenuRole::Plain:
        break;
    }
    return std::make_shared<MenuItem>(std::move(name), std::move(text), std::move(shortcut));
}

} // namespace

Menu::Menu() {
    for (const MenuTable& table : kMenus)
        Build(table);
}

const std::shared_ptr<Menu>& Menu::Instance() {
    static const auto menu = std::make_shared<Menu>();
    return menu;
}

void Menu::Build(const MenuTable& table) {
    auto menu = std::make_shared<MenuItem>(std::string(table.name), std::string(table.text));
    Append(menu);
    for (const MenuRow& row : table.rows) {
        auto item = MakeItem(row);
        item->SetRepeats(row.repeats);
        menu->Append(std::move(item));
    }
}

} // namespace kirolane
