#include "logic/shell/mainform.h"
#include "logic/shell/menu_table.h"

namespace kirolane {

void Mainform::AddMenuHandlers() {
    ForEachCommand(Where::Console, [this](const MenuRow& row) {
        BindMenu(row.name, [this, command = row.command] {
            command.RunOn(*this);
            return false;
        });
    });
}

/// Opens the selected row of the list in front, whatever side the key belongs to.
void Mainform::OpenKey_Action() {
    const std::int32_t page = ListTab()->Value();
    if (page == 0 && StrGrid()->ListCount() > 0)
        StrGridDblClick_Action();
    if (page == 1 && mStrGrid()->ListCount() > 0)
        mStrGridDblClick_Action();
}

} // namespace kirolane
