#include "show_forms.h"

#include "contract/listbox.h"
#include "logic/shell/menu_table.h"

#include <memory>

namespace kirolane::tests {

void LoggedForm::AddMenus() {
    kirolane::MenuBar bar;
    for (const MenuTable& table : kMenus) {
        auto menu = std::make_shared<kirolane::MenuItem>(std::string(table.name), std::string(table.text));
        for (const MenuRow& row : table.rows) {
            auto item = std::make_shared<kirolane::MenuItem>(std::string(row.name), std::string(row.text),
                                                             std::string(row.shortcut));
            item->SetRepeats(row.repeats);
            menu->Append(std::move(item));
            if (row.text != "-")
                BindMenu(row.name, [this, name = std::string(row.name)] {
                    Log(name);
                    return true;
                });
        }
        bar.Append(menu);
    }
    SetMenuBar(bar);
}

void ConsoleShow::CreateControls() {
    LoggedForm::CreateControls();
    for (const char* name : {"StrGrid", "mStrGrid"}) {
        const auto list = Control<Listbox>(name);
        list->SetHeading(0, " ");
        list->SetHeading(1, "ファイル名");
        list->SetHeading(2, "時間");
        list->OnCellBackgroundPaint = [](Graphics& g, std::int32_t row, std::int32_t /*column*/) {
            g.SetForeColor(row % 2 == 0 ? RGB(237, 243, 254) : kWhite);
            g.FillRect(0, 0, g.Width(), g.Height());
            return false;
        };
        for (int row = 0; row < 26; ++row)
            list->AddRow("");
    }
}

} // namespace kirolane::tests
