#include "contract/screen.h"
#include "logic/display/monitorform.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"
#include "logic/shell/menu_table.h"
#include "logic/sound/musicform.h"

namespace kirolane {

/// Takes the console and the sound window off the screen and brings them back; the item's text tells what the
/// next press will do. The transport goes on undisturbed.
void Mainform::AltX_Action() {
    const bool fullScreen = Equals(Setting_Data(line::kFullScreen), "true");
    if (!AltX_Flag) {
        AltX_Flag = true;
        Hide();
        Instance<MusicForm>()->Hide();
        if (fullScreen) {
            SetMenuBarVisible(false);
            Instance<MonitorForm>()->SetMenuBarVisible(false);
        }
        AltX_Key()->SetText(std::string(kShowConsoleText));
    } else {
        AltX_Flag = false;
        Show();
        if (mFileOpen_Flag)
            Instance<MusicForm>()->Show();
        if (fullScreen) {
            SetMenuBarVisible(true);
            Instance<MonitorForm>()->SetMenuBarVisible(true);
        }
        AltX_Key()->SetText(std::string(kHideConsoleText));
    }
}

/// The windowed monitor follows; nothing keeps it on the screen. The settings are read at each move.
void Mainform::Event_Moved() {
    if (!Equals(Setting_Data(line::kHide), "false"))
        Instance<MonitorForm>()->Hide();
    else if (Equals(Setting_Data(line::kDualDisplay), "false"))
        FollowConsole();
    else if (Equals(Setting_Data(line::kDualDisplay), "true") && ScreenCount() == 1)
        FollowConsole();
}

void Mainform::Event_Activate() {
    FocusList();
}

void Mainform::Event_Deactivate() {
    FocusList();
}

void Mainform::Event_Restore() {
    FocusList();
}

} // namespace kirolane
