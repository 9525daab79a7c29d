#include "settings/settingform.h"

#include "platform/numbers.h"
#include "platform/screen.h"
#include "settings/settingform_controls.h"
#include "shell/menu.h"
#include "video/free_steps.h"

namespace kirolane {

SettingForm::SettingForm() : Window("SettingForm", kSettingFormDesign) {}

void SettingForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void SettingForm::CreateControls() {
    Window::CreateControls(design::kSettingFormControls);
}

void SettingForm::Event_Open() {
    SetTop(ToInteger(Screen(0).Height() / 2.0 - Height() / 2.0));
    SetLeft(ToInteger(Screen(0).Width() / 2.0 - Width() / 2.0));
    for (const auto& popup : {FreeSeek_Popup(), mFreeSeek_Popup()})
        for (const FreeStep& step : kFreeSteps)
            popup->AddRow(std::string(step.label));
    FreeSeek_Popup()->SetListIndex(2);
    mFreeSeek_Popup()->SetListIndex(2);
}

} // namespace kirolane
