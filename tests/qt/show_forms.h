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

/// A command is logged by its item's name.
class LoggedForm : public TestForm {
public:
    LoggedForm(std::string_view name, const WindowDesign& design, std::span<const ControlDesign> controls)
        : TestForm(name, design), m_controls(controls) {}

    void Event_ScreenChanged(std::int32_t width, std::int32_t height) override {
        Log("ScreenChanged " + std::to_string(width) + "x" + std::to_string(height));
    }

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(m_controls); }
    void Layout() override {
        if (!Is(WindowRole::Console) && !Is(WindowRole::Audience))
            return;
        SetMenuBar(*Menu::Instance());
        for (const MenuTable& table : kMenus)
            for (const MenuRow& row : table.rows)
                if (IsCommand(row))
                    BindMenu(row.name, [this, name = std::string(row.name)] { return Log(name), true; });
    }

private:
    std::span<const ControlDesign> m_controls;
};

/// The console, its lists striped and filled with blank rows.
struct ConsoleShow : LoggedForm {
    ConsoleShow() : LoggedForm("Mainform", kMainformDesign, design::kMainformControls) {}
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
/// The audience's window.
struct MonitorShow : LoggedForm {
    MonitorShow() : LoggedForm("MonitorForm", kMonitorFormDesign, design::kMonitorFormControls) {}
};
/// The palette.
struct MusicShow : LoggedForm {
    MusicShow() : LoggedForm("MusicForm", kMusicFormDesign, design::kMusicFormControls) {}
};
/// The tool that stays above the console.
struct SettingShow : LoggedForm {
    SettingShow() : LoggedForm("SettingForm", kSettingFormDesign, design::kSettingFormControls) {}
};
/// The document without a close box.
struct AboutShow : LoggedForm {
    AboutShow() : LoggedForm("VerForm", kVerFormDesign, design::kVerFormControls) {}
};

} // namespace kirolane::tests
