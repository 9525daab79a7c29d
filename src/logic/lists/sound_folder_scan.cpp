#include "contract/folder_reading.h"
#include "logic/lists/media_types.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

/// The sound list's twin of FolderThread_Run. The three tails of the name are the same fields: each scan
/// writes and compares them between two yields.
Task Mainform::mFolderThread_Run() {
    const auto list = mStrGrid();
    const auto countLabel = mFileNumberLabel();
    const auto player = Instance<MusicForm>()->QTM();

    mFold_Flag = true;
    FolderReading reading; // kept to the end: the items answer from one reading of the folder
    Ref<FolderItem> found = mfolder;
    if (const std::int32_t n = SoundFolderLine(mFoldNumber); n != 0) {
        FolderReading read = co_await ReadFolder(Setting_Data(n));
        reading = std::move(read);
        found = reading.folder;
    }
    if (found.IsNil())
        mCountLabel()->SetVisible(false); // of a scan that this one has cut short
    const std::string path = found->AbsolutePath();
    const std::int32_t items = found->Count();
    for (std::int32_t k = 0; k <= kScanBound; ++k) {
        mf_all.Set(k, {});
        mf_box.Set(k, {});
        co_await Yield();
    }
    // Between the same two yields: a row is opened by the folder, whenever that may be.
    mfolder = found;
    mCurrent_Folder = path;
    mDirLabel()->SetCaption(path);
    list->DeleteAllRows();
    mCountLabel()->SetVisible(true);

    std::int32_t matches = 0;
    for (std::int32_t i = 1; i <= items; ++i) {
        mf_all.Set(i, mfolder->Item(i)->Name());
        mfile = GetFolderItem(mCurrent_Folder)->Child(mf_all(i));
        if (!mfile->Directory()) {
            TakeNameTails(mfile->Name());
            if (FindByTail(kSoundTypes, MaxText_A, MaxText_B, MaxText_C) != nullptr) {
                ++matches;
                mf_box.Set(matches - 1, mf_all(i));
                list->AddRow("");
                list->SetCell(matches - 1, 1, mf_box(matches - 1));
                if (mFold_Flag && mf_box(matches - 1) == mDocument)
                    list->SetListIndex(matches - 1);
            }
        }
        list->SetScrollBarVertical(true);
        countLabel->SetText(Str(matches));
        if (!mFold_Flag && !player->Movie().IsNil() && Equals(mfolder->AbsolutePath(), mCurrent_Dir))
            countLabel->SetText(Str(mFile_Number + 1) + " / " + Str(matches));
        if (list->ListIndex() == -1 && mFile_Count != 0) // the count is still the one before this item
            list->SetListIndex(0);
        mFile_Count = matches;
        co_await Yield();
    }
    mCountLabel()->SetVisible(false);
    for (std::int32_t k = list->ListCount() + 1; k <= kBlankRows; ++k) {
        list->AddRow("");
        co_await Yield();
    }
    list->SetScrollBarVertical(true);
    list->SetFocus();
}

} // namespace kirolane
