#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

namespace kirolane {

void Mainform::LoopPlay_Action() {
    Loop_Flag = !Loop_Flag;
    LoopLabel()->SetCaption(Loop_Flag ? "→" : "");
    List_Flag = false;
}

void Mainform::ListLoopPlay_Action() {
    List_Flag = !List_Flag;
    LoopLabel()->SetCaption(List_Flag ? "↓" : "");
    Loop_Flag = false;
}

/// The end is found by looking, once a tick: the position at or past the whole seconds of the length, so up
/// to a second early. Only the console's player is asked.
void Mainform::QTM_TImeLoop_Func() { // sic
    if (!(QTM_Max <= QTM()->Position() && Play_Flag))
        return;
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetPosition(0.0);
    monitor->QTM()->SetPosition(0.0);
    QTM_PosBar()->SetValue(0); // before Play, whose event starts from the slider
    if (Loop_Flag) {
        QTM()->Play();
        monitor->QTM()->Play();
        PlayModeLabel()->SetCaption("再生中");
        return;
    }
    QTM()->Stop();
    monitor->QTM()->Stop();
    QTM()->Refresh(true);
    monitor->QTM()->Refresh(true);
    Play_Flag = false;
    PlayModeLabel()->SetCaption("停止"); // behind the event of Stop, which writes 一時停止
    if (List_Flag)
        PlayNextRow();
}

/// From a list that was filled anew, or from its last row, the first row is next. In a list shorter than its
/// blank rows the row after the last is blank, and opening it goes to the first.
void Mainform::PlayNextRow() {
    if (File_Count == 0)
        return;
    const auto list = StrGrid();
    if (Fold_Flag || File_Number == list->ListCount() - 1) {
        list->SetListIndex(0);
        File_Number = 0;
    } else {
        list->SetListIndex(File_Number + 1);
    }
    GetListIndex_Flag = kMovieList;
    StrGridDblClick_Action();
}

} // namespace kirolane
