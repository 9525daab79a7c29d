#include "contract/screen.h"
#include "logic/display/monitorform.h"
#include "logic/settings/setting_lines.h"
#include "logic/settings/settingform.h"
#include "logic/shell/mainform.h"

namespace kirolane {

void Mainform::ApplySettings() {
    Instance<SettingForm>()->DisplayMode_Check()->SetEnabled(true);
    if (!SettingForm_Flag)
        Instance<SettingForm>()->Hide();
    if (!Setting_Data(1).empty()) {
        PlaceWindows();
        Instance<MonitorForm>()->Show();
        Show(); // last, so that the console stands in front
        ApplyWindowColor();
        CheckFolderLines();
        StartFirstScans();
    }
    if (!Equals(Setting_Data(line::kHide), "false")) {
        Instance<MonitorForm>()->Hide();
        AltX_Key()->SetAutoEnable(false); // nothing would be left on the screen
    }
    ShowFolderTips();
}

/// Dual display rules out full screen, and full screen rules out hiding. Only the literals count: any other
/// text leaves the monitor window at its design size and place.
void Mainform::PlaceWindows() {
    if (Equals(Setting_Data(line::kDualDisplay), "true")) {
        if (ScreenCount() >= 2) {
            PlaceOnSecondScreen();
        } else {
            PlaceBelowConsole();
            Setting_Data.Set(line::kDualDisplay, "false"); // for this run; the file keeps the wish
        }
    } else if (Equals(Setting_Data(line::kDualDisplay), "false")) {
        if (Equals(Setting_Data(line::kFullScreen), "true"))
            PlaceOnFirstScreen();
        else if (Equals(Setting_Data(line::kFullScreen), "false")) {
            if (Equals(Setting_Data(line::kHide), "true"))
                Instance<MonitorForm>()->Hide();
            else
                PlaceBelowConsole();
        }
    }
}

void Mainform::ApplyWindowColor() {
    if (Equals(Setting_Data(line::kWindowColor), "true")) {
        SetBackColor(kFlat);
        SetHasBackColor(true);
    } else if (Equals(Setting_Data(line::kWindowColor), "false")) {
        SetBackColor(kWhite);
        SetHasBackColor(false);
    }
}

void Mainform::CheckFolderLines() {
    for (std::int32_t n = line::kFirstFolder; n <= line::kLastSoundFolder; ++n) {
        if (n > line::kLastFolder && n < line::kFirstSoundFolder)
            continue;
        if (GetFolderItem(Setting_Data(n)).IsNil())
            Setting_Data.Set(n, GetFolderItem("")->AbsolutePath());
        YieldToThreads();
    }
}

void Mainform::StartFirstScans() {
    for (std::int32_t n = 1; n <= kFolders; ++n) {
        if (Equals(Setting_Data(line::kFolderNumber), Str(n))) {
            FoldNumber = n;
            Fold(n)->SetValue(true);
            FolderThread()->Run();
            break;
        }
    }
    for (std::int32_t n = 1; n <= kFolders; ++n) {
        if (Equals(Setting_Data(line::kSoundFolderNumber), Str(n))) {
            mFoldNumber = n;
            mFold(n)->SetValue(true);
            mFolderThread()->Run();
            break;
        }
    }
}

void Mainform::ShowFolderTips() {
    for (std::int32_t n = 1; n <= kFolders; ++n)
        Fold(n)->SetHelpTag(Setting_Data(FolderLine(n)));
    for (std::int32_t n = 1; n <= kFolders; ++n)
        mFold(n)->SetHelpTag(Setting_Data(SoundFolderLine(n)));
}

} // namespace kirolane
