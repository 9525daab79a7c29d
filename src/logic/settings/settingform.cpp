#include "logic/settings/settingform.h"

#include "contract/exceptions.h"
#include "contract/numbers.h"
#include "contract/screen.h"
#include "logic/settings/setting_lines.h"
#include "logic/settings/settingform_controls.h"
#include "logic/shell/mainform.h"
#include "logic/shell/menu.h"
#include "logic/video/free_steps.h"

namespace kirolane {

SettingForm::SettingForm() : Window("SettingForm", kSettingFormDesign) {}

void SettingForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void SettingForm::CreateControls() {
    Window::CreateControls(design::kSettingFormControls);
    DisplayMode_Check()->OnAction = [this] { DisplayMode_Check_Action(); };
    FullScreen_Check()->OnAction = [this] { FullScreen_Check_Action(); };
    Hide_Check()->OnAction = [this] { Hide_Check_Action(); };
    WindowColor_Check()->OnAction = [this] { WindowColor_Check_Action(); };
    SettingButton()->OnAction = [this] { SettingButton_Action(); };
    FreeSeek_Popup()->OnChange = [this] { FreeSeek_Popup_Change(); };
    mFreeSeek_Popup()->OnChange = [this] { FreeSeek_Popup_Change(); };
    UpDownArrow()->OnUp = [this] { UpDownArrow_Up(FolderNumber_Edit()); };
    UpDownArrow()->OnDown = [this] { UpDownArrow_Down(FolderNumber_Edit()); };
    mUpDownArrow()->OnUp = [this] { UpDownArrow_Up(mFolderNumber_Edit()); };
    mUpDownArrow()->OnDown = [this] { UpDownArrow_Down(mFolderNumber_Edit()); };
    for (std::int32_t n = 1; n <= kFolders; ++n) {
        Folder_Bevel(n)->OnAction = [this, n] { Folder_Bevel_Action(Folder_Edit(n)); };
        mFolder_Bevel(n)->OnAction = [this, n] { Folder_Bevel_Action(mFolder_Edit(n)); };
    }
}

void SettingForm::Event_Open() {
    CentreOn(Screen(0));
    for (const auto& popup : {FreeSeek_Popup(), mFreeSeek_Popup()})
        for (const FreeStep& step : kFreeSteps)
            popup->AddRow(std::string(step.label));
    FreeSeek_Popup()->SetListIndex(2);
    mFreeSeek_Popup()->SetListIndex(2);
}

void SettingForm::Event_Close() {
    Instance<Mainform>()->FocusList();
}

/// The boxes' own rules run with their values and bring the others out of their disabled design state.
void SettingForm::DataSet_Func() {
    const auto console = Instance<Mainform>();
    const auto set = [&](const Ref<CheckBox>& box, std::int32_t n) {
        if (Equals(console->Setting_Data(n), "true"))
            box->SetValue(true);
        else if (Equals(console->Setting_Data(n), "false"))
            box->SetValue(false);
    };
    set(DisplayMode_Check(), line::kDualDisplay);
    set(FullScreen_Check(), line::kFullScreen);
    set(WindowColor_Check(), line::kWindowColor);
    set(Hide_Check(), line::kHide);
    DisplayMode_Check()->SetEnabled(true);
    WindowColor_Check()->SetEnabled(true);
    if (!console->SettingForm_Flag)
        Hide();
    if (DisplayMode_Check()->Value())
        Hide_Check()->SetEnabled(false);
    FreeSeek_Popup()->SetListIndex(ToInteger(CDbl(console->Setting_Data(line::kFreeSeek)) - 1));
    mFreeSeek_Popup()->SetListIndex(ToInteger(CDbl(console->Setting_Data(line::kSoundFreeSeek)) - 1));
    FolderNumber_Edit()->SetText(console->Setting_Data(line::kFolderNumber));
    mFolderNumber_Edit()->SetText(console->Setting_Data(line::kSoundFolderNumber));
    for (std::int32_t n = 1; n <= kFolders; ++n)
        Folder_Edit(n)->SetText(console->Setting_Data(FolderLine(n)));
    for (std::int32_t n = 1; n <= kFolders; ++n)
        mFolder_Edit(n)->SetText(console->Setting_Data(SoundFolderLine(n)));
}

/// The file is always written whole. Whatever stood in the fillers and in the slots of the chosen folders
/// goes back to its literal, in memory too.
void SettingForm::SettingButton_Action() {
    const auto console = Instance<Mainform>();
    MessageLabel()->SetCaption(""); // a save that fails must not leave the word of the one before
    StringArray& data = console->Setting_Data;
    for (const SettingLines& lines : kSettingLines)
        if (lines.kind != LineKind::Value && lines.kind != LineKind::Folder)
            for (std::int32_t n = lines.first; n <= lines.last; ++n)
                data.Set(n, std::string(lines.saved));
    const auto saved = [](const Ref<CheckBox>& box) { return box->Value() ? "true" : "false"; };
    data.Set(line::kDualDisplay, saved(DisplayMode_Check()));
    data.Set(line::kFullScreen, saved(FullScreen_Check()));
    data.Set(line::kHide, saved(Hide_Check()));
    data.Set(line::kWindowColor, saved(WindowColor_Check()));
    data.Set(line::kFreeSeek, Str(FreeSeek_Popup()->ListIndex() + 1));
    data.Set(line::kSoundFreeSeek, Str(mFreeSeek_Popup()->ListIndex() + 1));
    data.Set(line::kFolderNumber, FolderNumber_Edit()->Text());
    data.Set(line::kSoundFolderNumber, mFolderNumber_Edit()->Text());
    for (std::int32_t n = 1; n <= kFolders; ++n) {
        data.Set(FolderLine(n), Folder_Edit(n)->Text());
        data.Set(SoundFolderLine(n), mFolder_Edit(n)->Text());
    }
    console->CheckFolderLines();
    console->WriteSettings();
    MessageLabel()->SetCaption("設定を確定しました");
    console->ShowFolderTips();
}

void SettingForm::DisplayMode_Check_Action() {
    if (DisplayMode_Check()->Value()) {
        FullScreen_Check()->SetEnabled(false);
        FullScreen_Check()->SetValue(false);
        Hide_Check()->SetEnabled(false);
        Hide_Check()->SetValue(false);
    } else {
        FullScreen_Check()->SetEnabled(true);
        Hide_Check()->SetEnabled(true);
    }
    MessageLabel()->SetCaption("");
}

void SettingForm::FullScreen_Check_Action() {
    if (FullScreen_Check()->Value()) {
        Hide_Check()->SetEnabled(false);
        Hide_Check()->SetValue(false);
    } else {
        Hide_Check()->SetEnabled(true);
    }
    MessageLabel()->SetCaption("");
}

void SettingForm::Hide_Check_Action() {
    MessageLabel()->SetCaption("");
}

void SettingForm::WindowColor_Check_Action() {
    MessageLabel()->SetCaption("");
}

void SettingForm::FreeSeek_Popup_Change() {
    MessageLabel()->SetCaption("");
}

void SettingForm::UpDownArrow_Up(const Ref<EditField>& field) {
    for (std::int32_t n = 1; n < kFolders; ++n) {
        if (Equals(field->Text(), Str(n))) {
            field->SetText(Str(n + 1));
            break;
        }
    }
    MessageLabel()->SetCaption("");
}

void SettingForm::UpDownArrow_Down(const Ref<EditField>& field) {
    for (std::int32_t n = kFolders; n > 1; --n) {
        if (Equals(field->Text(), Str(n))) {
            field->SetText(Str(n - 1));
            break;
        }
    }
    MessageLabel()->SetCaption("");
}

void SettingForm::Folder_Bevel_Action(const Ref<EditField>& field) {
    Hide();
    const auto chosen = SelectFolder();
    Show();
    if (chosen.IsNil())
        return;
    const std::string path = chosen->AbsolutePath();
    if (path.find('\n') != std::string::npos)
        throw RuntimeException(path + ": a path with a line break cannot be stored in a file of lines");
    field->SetText(path);
    MessageLabel()->SetCaption("");
}

void Mainform::SettingFormShow_Action() {
    Instance<SettingForm>()->DataSet_Func();
    Instance<SettingForm>()->MessageLabel()->SetCaption("");
    SettingForm_Flag = true;
    Instance<SettingForm>()->Show();
}

} // namespace kirolane
