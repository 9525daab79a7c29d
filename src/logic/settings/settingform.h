#pragma once

#include "contract/bevelbutton.h"
#include "contract/checkbox.h"
#include "contract/editfield.h"
#include "contract/popupmenu.h"
#include "contract/statictext.h"
#include "contract/text.h"
#include "contract/updownarrows.h"
#include "contract/window.h"

#include <cstdint>

namespace kirolane {

/// The preferences: shows the settings lines and writes them back as a whole when the button is pressed. A
/// change acts on the console's Setting_Data alone; no window moves and no scan starts.
class SettingForm : public Window {
public:
    SettingForm();

    Ref<CheckBox> DisplayMode_Check() const { return Control<CheckBox>("DisplayMode_Check"); }
    Ref<CheckBox> FullScreen_Check() const { return Control<CheckBox>("FullScreen_Check"); }
    Ref<CheckBox> Hide_Check() const { return Control<CheckBox>("Hide_Check"); }
    Ref<CheckBox> WindowColor_Check() const { return Control<CheckBox>("WindowColor_Check"); }
    Ref<BevelButton> SettingButton() const { return Control<BevelButton>("SettingButton"); }
    Ref<StaticText> MessageLabel() const { return Control<StaticText>("MessageLabel"); }
    Ref<PopupMenu> FreeSeek_Popup() const { return Control<PopupMenu>("FreeSeek_Popup"); }
    Ref<PopupMenu> mFreeSeek_Popup() const { return Control<PopupMenu>("mFreeSeek_Popup"); }
    Ref<EditField> FolderNumber_Edit() const { return Control<EditField>("FolderNumber_Edit"); }
    Ref<EditField> mFolderNumber_Edit() const { return Control<EditField>("mFolderNumber_Edit"); }
    Ref<UpDownArrows> UpDownArrow() const { return Control<UpDownArrows>("UpDownArrow"); }
    Ref<UpDownArrows> mUpDownArrow() const { return Control<UpDownArrows>("mUpDownArrow"); }
    /// `n` is the folder's number, 1 to 10.
    Ref<BevelButton> Folder_Bevel(std::int32_t n) const {
        return Control<BevelButton>("Folder" + Str(n) + "_Bevel");
    }
    Ref<BevelButton> mFolder_Bevel(std::int32_t n) const {
        return Control<BevelButton>("mFolder" + Str(n) + "_Bevel");
    }
    Ref<EditField> Folder_Edit(std::int32_t n) const {
        return Control<EditField>("Folder" + Str(n) + "_Edit");
    }
    Ref<EditField> mFolder_Edit(std::int32_t n) const {
        return Control<EditField>("mFolder" + Str(n) + "_Edit");
    }

    void Layout() override;
    void CreateControls() override;

    /// Centres the window on the first display and fills the two popups.
    void Event_Open() override;
    /// The keyboard goes to the console's list in front.
    void Event_Close() override;

    /// Fills the controls from the settings lines. A bad value leaves a box as it is and chooses no step.
    void DataSet_Func();
    /// The save: settings lines, file, tool tips of the folder buttons. The window stays open.
    void SettingButton_Action();

    // Dual display rules out full screen, and full screen rules out hiding. Each empties the message.
    void DisplayMode_Check_Action();
    void FullScreen_Check_Action();
    void Hide_Check_Action();
    void WindowColor_Check_Action();

    // One for the movie page and the sound page alike.
    void FreeSeek_Popup_Change();
    /// "1" to "10", without wrapping; any other text stays.
    void UpDownArrow_Up(const Ref<EditField>& field);
    void UpDownArrow_Down(const Ref<EditField>& field);
    /// Asks for a folder, with this window out of the way meanwhile. A path that the settings file could not
    /// hold is a failure, and the old text stays.
    void Folder_Bevel_Action(const Ref<EditField>& field);
};

} // namespace kirolane
