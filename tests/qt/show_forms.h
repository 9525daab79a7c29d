#pragma once

#include "contract/listbox.h"
#include "logic/about/verform_controls.h"
#include "logic/display/monitorform_controls.h"
#include "logic/settings/settingform_controls.h"
#include "logic/shell/mainform_controls.h"
#include "logic/shell/menu.h"
#include "logic/shell/menu_table.h"
#include "logic/sound/musicform_controls.h"
#include "support/console_test.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Forms with the program's own designs and menus and none of its logic: what happens to them is written
/// down.
namespace kirolane::tests {

struct Form {
    const char* name;
    const WindowDesign& design;
    std::span<const ControlDesign> rows;
};

inline constexpr Form kForms[] = {
    {"Mainform", kMainformDesign, design::kMainformControls},
    {"MonitorForm", kMonitorFormDesign, design::kMonitorFormControls},
    {"MusicForm", kMusicFormDesign, design::kMusicFormControls},
    {"SettingForm", kSettingFormDesign, design::kSettingFormControls},
    {"VerForm", kVerFormDesign, design::kVerFormControls},
};

/// A command is logged by its item's name.
template <int number> class LoggedForm : public TestForm {
public:
    LoggedForm() : TestForm(kForms[number].name, kForms[number].design) {}

    void Event_ScreenChanged(std::int32_t width, std::int32_t height) override {
        Log("ScreenChanged " + std::to_string(width) + "x" + std::to_string(height));
    }

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(kForms[number].rows); }
    void Layout() override {
        if (!Is(WindowRole::Console) && !Is(WindowRole::Audience))
            return;
        SetMenuBar(*Menu::Instance());
        for (const MenuTable& table : kMenus)
            for (const MenuRow& row : table.rows)
                if (IsCommand(row))
                    BindMenu(row.name, [this, name = std::string(row.name)] { return Log(name), true; });
    }
};
using MonitorShow = LoggedForm<1>; // the audience's window
using MusicShow = LoggedForm<2>;   // the palette
using SettingShow = LoggedForm<3>; // the tool that stays above the console
using AboutShow = LoggedForm<4>;   // the document without a close box

/// The console, its lists striped and filled with blank rows.
struct ConsoleShow : LoggedForm<0> {
    void CreateControls() override {
        LoggedForm::CreateControls();
        for (const char* name : {"StrGrid", "mStrGrid"}) {
            const auto list = Control<Listbox>(name);
            list->SetHeading(1, "ファイル名");
            list->OnCellBackgroundPaint = [](Graphics& g, std::int32_t row, std::int32_t /*column*/) {
                g.SetForeColor(row % 2 == 0 ? RGB(237, 243, 254) : kWhite);
                g.FillRect(0, 0, g.Width(), g.Height());
                return false;
            };
            for (int row = 0; row < 26; ++row)
                list->AddRow("");
        }
    }
};

} // namespace kirolane::tests
