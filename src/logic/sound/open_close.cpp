#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

/// Opens the selected row of the sound list and plays it; the sound window comes up with it.
void Mainform::mQTMPlay_Func() {
    const auto form = Instance<MusicForm>();
    const auto list = mStrGrid();
    if (list->ColumnCount() == 0)
        return;
    mQTM_Close_Action();
    mfile = GetFolderItem(mCurrent_Folder)->Child(list->Cell(list->ListIndex(), 1));
    form->QTM()->SetMovie(mfile->OpenAsMovie());
    if (!form->QTM()->Movie().IsNil()) {
        mPlay_Flag = true;
        mFileOpen_Flag = true;
        mFile_Number = list->ListIndex();
        form->QTM_PlayButton()->SetEnabled(true);
        form->QTM_FrameFreeDownButton()->SetEnabled(true);
        form->QTM_FrameFreeUpButton()->SetEnabled(true);
        form->QTM_PosBar()->SetValue(0);
        form->QTM_PosBar()->SetEnabled(true);
        form->QTM()->SetPosition(0.0);
        GetListIndex_Func();
        form->QTM()->SetVisible(false);
        MusicForm_Flag = true;
        form->Show();
        mCurrent_Dir = mfolder->AbsolutePath();
        form->FileLabel()->SetCaption(list->Cell(list->ListIndex(), 1));
    } else {
        mQTM_Close_Action();
    }
    if (mMute_Flag) {
        // The first restores the volume held, the second takes it anew and silences: the mute outlives the
        // change of sound.
        mMute_Func();
        mMute_Func();
    } else {
        mVolumeSave_Func();
    }
    if (mFileOpen_Flag) {
        mQTM_MaxTime_Func();
        mQTM_Play_Action();
    }
}

void Mainform::mQTM_Close_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    form->QTM()->SetVisible(false);
    form->QTM()->SetMovie(nullptr);
    form->PosTime()->SetCaption("00：00：00");
    form->MaxTime()->SetCaption("00：00：00");
    form->SetTitle("00：00：00");
    form->MediaType()->SetCaption("");
    form->PlayModeLabel()->SetCaption("");
    form->FileLabel()->SetCaption("");
    GetListIndexNull_Func();
    mPlay_Flag = false;
    mFileOpen_Flag = false;
    form->QTM_PlayButton()->SetEnabled(false);
    form->QTM_FrameFreeUpButton()->SetEnabled(false);
    form->QTM_FrameFreeDownButton()->SetEnabled(false);
    mMark_Pos = 0;
    mMark_Flag = false;
    mSeekLoop_flag = false;
    form->QTM_PosBar()->SetMaximum(1);
    form->QTM_PosBar()->SetValue(0);
    form->QTM_PosBar()->SetEnabled(false);
    const auto list = mStrGrid();
    for (std::int32_t row = 0; row <= mFile_Count - 1; ++row) { // a scan in between changes the count
        list->SetCell(row, 0, "");
        YieldToThreads();
    }
    MusicForm_Flag = false;
    form->Hide();
    FocusList();
}

} // namespace kirolane
