#include "logic/display/monitorform.h"

#include "logic/display/monitorform_controls.h"
#include "logic/shell/mainform.h"
#include "logic/shell/menu.h"
#include "logic/shell/menu_table.h"

#include <algorithm>
#include <iterator>

namespace kirolane {

namespace {

/// A command that this window has and that runs something else than in the console.
struct Exception {
    std::string_view item;
    Command command;
};

constexpr Exception kExceptions[] = {
    {"mMarkKey", &Mainform::mQTM_MarkSeek_Action}, // sic: here it jumps and cannot set a mark
};

/// Not by FindInMenu: under sanitizers g++ compares no pointer with null before the program runs.
constexpr bool AllInBothWindows() {
    return std::all_of(std::begin(kExceptions), std::end(kExceptions), [](const Exception& exception) {
        return std::any_of(std::begin(kMenus), std::end(kMenus), [&](const MenuTable& menu) {
            return std::any_of(menu.rows.begin(), menu.rows.end(), [&](const MenuRow& row) {
                return row.name == exception.item && row.where == Where::Both;
            });
        });
    });
}
static_assert(AllInBothWindows());

Command CommandHere(const MenuRow& row) {
    const auto* const exception = std::find_if(std::begin(kExceptions), std::end(kExceptions),
                                               [&](const Exception& e) { return e.item == row.name; });
    return exception == std::end(kExceptions) ? row.command : exception->command;
}

} // namespace

MonitorForm::MonitorForm() : Window("MonitorForm", kMonitorFormDesign) {}

void MonitorForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void MonitorForm::CreateControls() {
    Window::CreateControls(design::kMonitorFormControls);
}

void MonitorForm::AddMenuHandlers() {
    ForEachCommand(Where::Monitor, [this](const MenuRow& row) {
        BindMenu(row.name, [command = CommandHere(row)] {
            command.RunOn(*Instance<Mainform>());
            return false;
        });
    });
    BindMenu("FileQuit", [this] {
        Close(); // this window alone; the program goes on
        return false;
    });
}

void MonitorForm::Event_Activate() {
    if (!Instance<Mainform>()->AltX_Flag)
        Instance<Mainform>()->Show();
}

/// Without condition; the two of the application's menu enable themselves.
void MonitorForm::Event_EnableMenuItems() {
    ForEachCommand(Where::Monitor, [this](const MenuRow& row) {
        if (row.role != MenuRole::About && row.role != MenuRole::Preferences)
            MenuItem(row.name)->SetEnabled(true);
    });
}

} // namespace kirolane
