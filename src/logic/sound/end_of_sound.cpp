#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

void Mainform::mLoopPlay_Action() {
    mLoop_Flag = !mLoop_Flag;
    mLoopLabel()->SetCaption(mLoop_Flag ? "→" : "");
    mList_Flag = false;
}

void Mainform::mListLoopPlay_Action() {
    mList_Flag = !mList_Flag;
    mLoopLabel()->SetCaption(mList_Flag ? "↓" : "");
    mLoop_Flag = false;
}

void Mainform::mQTM_TImeLoop_Func() { // sic
    const auto form = Instance<MusicForm>();
    if (!(mQTM_Max <= form->QTM()->Position() && mPlay_Flag))
        return;
    form->QTM()->SetPosition(0.0);
    form->QTM_PosBar()->SetValue(0);
    if (mLoop_Flag) {
        form->QTM()->Play();
        form->PlayModeLabel()->SetCaption("再生中");
        return;
    }
    form->QTM()->Stop();
    mPlay_Flag = false;
    form->PlayModeLabel()->SetCaption("停止");
    if (mList_Flag)
        mPlayNextRow();
}

void Mainform::mPlayNextRow() {
    if (mFile_Count == 0)
        return;
    const auto list = mStrGrid();
    if (mFold_Flag || mFile_Number == list->ListCount() - 1) {
        list->SetListIndex(0);
        mFile_Number = 0;
    } else {
        list->SetListIndex(mFile_Number + 1);
    }
    GetListIndex_Flag = kSoundList;
    mStrGridDblClick_Action();
}

} // namespace kirolane
