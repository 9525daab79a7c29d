#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

namespace kirolane {

// A press replaces the list's content, also a press of the button that is down; that is how a list is
// refreshed. What is open plays on.

void Mainform::Fold_Action(std::int32_t number) {
    FoldNumber = number;
    PressFolderButton(number);
    FolderThread()->Kill();
    FolderThread()->Run();
}

/// The folder chosen on the spot lives in memory, until the next save of the preferences.
void Mainform::Fold99_Action() {
    Sfolder = SelectFolder();
    if (Sfolder.IsNil())
        return;
    Setting_Data.Set(line::kChosenFolder, Sfolder->AbsolutePath());
    Fold(kChosenNumber)->SetHelpTag(Setting_Data(line::kChosenFolder));
    Fold_Action(kChosenNumber);
}

/// Exactly one button of a row looks pressed.
void Mainform::PressFolderButton(std::int32_t number) {
    for (std::int32_t n = 1; n <= kFolders; ++n)
        Fold(n)->SetValue(n == number);
    Fold(kChosenNumber)->SetValue(number == kChosenNumber);
}

void Mainform::mFold_Action(std::int32_t number) {
    mFoldNumber = number;
    mPressFolderButton(number);
    mFolderThread()->Kill();
    mFolderThread()->Run();
}

void Mainform::mFold99_Action() {
    mSfolder = SelectFolder();
    if (mSfolder.IsNil())
        return;
    Setting_Data.Set(line::kChosenSoundFolder, mSfolder->AbsolutePath());
    mFold(kChosenNumber)->SetHelpTag(Setting_Data(line::kChosenSoundFolder));
    mFold_Action(kChosenNumber);
}

void Mainform::mPressFolderButton(std::int32_t number) {
    for (std::int32_t n = 1; n <= kFolders; ++n)
        mFold(n)->SetValue(n == number);
    mFold(kChosenNumber)->SetValue(number == kChosenNumber);
}

void Mainform::ListTab_Change() {
    FocusList();
}

} // namespace kirolane
