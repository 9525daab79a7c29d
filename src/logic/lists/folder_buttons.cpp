#include "contract/messages.h"
#include "logic/lists/media_types.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

namespace kirolane {

// A press replaces the list's content, also a press of the button that is down; that is how a list is
// refreshed. What is open plays on.

void Mainform::Fold_Action(std::int32_t number) {
    FoldNumber = number;
    Document.clear();
    PressFolderButton(number);
    FolderThread()->Kill();
    FolderThread()->Run();
}

void Mainform::Fold99_Action() {
    Sfolder = SelectFolder();
    if (!Sfolder.IsNil())
        ListChosen();
}

/// The folder chosen on the spot lives in memory, until the next save of the preferences.
void Mainform::ListChosen() {
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
    mDocument.clear();
    mPressFolderButton(number);
    mFolderThread()->Kill();
    mFolderThread()->Run();
}

void Mainform::mFold99_Action() {
    mSfolder = SelectFolder();
    if (!mSfolder.IsNil())
        mListChosen();
}

void Mainform::mListChosen() {
    Setting_Data.Set(line::kChosenSoundFolder, mSfolder->AbsolutePath());
    mFold(kChosenNumber)->SetHelpTag(Setting_Data(line::kChosenSoundFolder));
    mFold_Action(kChosenNumber);
}

void Mainform::mPressFolderButton(std::int32_t number) {
    for (std::int32_t n = 1; n <= kFolders; ++n)
        mFold(n)->SetValue(n == number);
    mFold(kChosenNumber)->SetValue(number == kChosenNumber);
}

/// As the "?" button does. A file goes by the list that shows its kind, the movies' first.
void Mainform::ListDocument(const Ref<FolderItem>& chosen, const std::string& name) {
    TakeNameTails(name);
    const bool movie = FindByTail(kMovieTypes, MaxText_A, MaxText_B, MaxText_C) != nullptr;
    if (!movie && FindByTail(kSoundTypes, MaxText_A, MaxText_B, MaxText_C) != nullptr) {
        mSfolder = chosen;
        mListChosen();
        mDocument = name;
        ListTab()->SetValue(1);
        return;
    }
    Sfolder = chosen;
    ListChosen();
    Document = name;
    if (!movie && !name.empty())
        WriteErrorLine(chosen->Child(name)->NativePath() + ": no list shows files of its kind");
}

void Mainform::ListTab_Change() {
    FocusList();
}

} // namespace kirolane
