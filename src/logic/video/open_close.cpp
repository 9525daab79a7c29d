#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

namespace kirolane {

/// Opens the selected row twice, once for each player, and plays it. What is open is closed first.
void Mainform::QTMPlay_Func() {
    const auto monitor = Instance<MonitorForm>();
    const auto list = StrGrid();
    if (list->ColumnCount() == 0)
        return;
    QTM_Close_Action();
    file = GetFolderItem(Current_Folder)->Child(list->Cell(list->ListIndex(), 1));
    QTM()->SetMovie(file->OpenAsMovie());
    monitor->QTM()->SetMovie(file->OpenAsMovie());
    SizePlayers();
    if (!QTM()->Movie().IsNil()) {
        Play_Flag = true;
        FileOpen_Flag = true;
        File_Number = list->ListIndex();
        QTM_PlayButton()->SetEnabled(true);
        QTM_FrameFreeDownButton()->SetEnabled(true);
        QTM_FrameFreeUpButton()->SetEnabled(true);
        DummyQTM()->SetVisible(false);
        DummyBack()->SetVisible(false);
        monitor->DummyQTM()->SetVisible(false);
        monitor->DummyBack()->SetVisible(false);
        QTM_PosBar()->SetValue(0);
        QTM_PosBar()->SetEnabled(true);
        QTM()->SetPosition(0.0);
        monitor->QTM()->SetPosition(0.0);
        GetListIndex_Func();
        if (!Equals(MovieSize()->Caption(), "0x0")) {
            QTM()->SetVisible(true);
            monitor->QTM()->SetVisible(true);
        } else {
            QTM()->SetVisible(false);
            monitor->QTM()->SetVisible(false);
            MovieSize()->SetCaption("");
        }
        Current_Dir = folder->AbsolutePath();
        FileLabel()->SetCaption(list->Cell(list->ListIndex(), 1));
    } else {
        QTM_Close_Action();
    }
    QTM()->SetVolume(0); // the console's player is a silent preview
    if (Mute_Flag) {
        // The first restores the volume held into the new player, the second takes it anew and silences: the
        // mute outlives the change of movie.
        Mute_Func();
        Mute_Func();
    } else {
        VolumeSave_Func();
    }
    if (FileOpen_Flag) {
        QTM_MaxTime_Func();
        QTM_Play_Action();
    }
}

/// Back to the curtain. Level, rate, loop mode, selection and the size of the players stay as they are.
void Mainform::QTM_Close_Action() {
    if (QTM()->Movie().IsNil())
        return;
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetVisible(false);
    monitor->QTM()->SetVisible(false);
    QTM()->SetMovie(nullptr);
    monitor->QTM()->SetMovie(nullptr);
    DummyQTM()->SetVisible(true);
    DummyBack()->SetVisible(true);
    monitor->DummyQTM()->SetVisible(true);
    monitor->DummyBack()->SetVisible(true);
    PosTIme()->SetCaption("00：00：00");
    MonitorPosTime()->SetCaption("00：00：00");
    MaxTime()->SetCaption("00：00：00");
    TimingLabel()->SetCaption(" ±0秒：Timing"); // blanks unlike the design's
    MediaType()->SetCaption("");
    MovieSize()->SetCaption("");
    PlayModeLabel()->SetCaption("");
    FileLabel()->SetCaption("");
    GetListIndexNull_Func();
    Play_Flag = false;
    FileOpen_Flag = false;
    QTM_PlayButton()->SetEnabled(false);
    QTM_FrameFreeUpButton()->SetEnabled(false);
    QTM_FrameFreeDownButton()->SetEnabled(false);
    Mark_Pos = 0;
    Mark_Flag = false;
    QTM_PosBar()->SetMaximum(1);
    QTM_PosBar()->SetValue(0);
    QTM_PosBar()->SetEnabled(false);
    const auto list = StrGrid();
    for (std::int32_t row = 0; row <= File_Count - 1; ++row) { // a scan in between changes the count
        list->SetCell(row, 0, "");
        YieldToThreads();
    }
}

} // namespace kirolane
