#include "contract/numbers.h"
#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/time_text.h"

namespace kirolane {

/// Once a second, also while nothing is open. The read-outs show the positions from before a jump at the end
/// of the file, the slider and the drift those after it.
void Mainform::TimeTimer_Action() {
    if (!QTM()->Movie().IsNil()) {
        QTM_PosTime_Func();
        QTM_TImeLoop_Func();
        QTM_ScreenOut_Func();
        QTM_Timing_Func();
    }
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil()) {
        mQTM_PosTime_Func();
        mQTM_TImeLoop_Func();
        mQTM_ScreenOut_Func();
    }
    if (mSeekLoop_flag) { // a hook: nothing sets the flag
        if (mSeekPos + 3 < Instance<MusicForm>()->QTM()->Position())
            mQTM_MarkSeek_Action();
        mQTM_Play_Action();
    }
}

/// Each read-out comes from its own player.
void Mainform::QTM_PosTime_Func() {
    PosTIme()->SetCaption(TimeText(ToInteger(QTM()->Position())));
    MonitorPosTime()->SetCaption(TimeText(ToInteger(Instance<MonitorForm>()->QTM()->Position())));
}

/// Fixes the movie's length, once after it was opened.
void Mainform::QTM_MaxTime_Func() {
    QTM_DumpMax = QTM()->Duration();
    QTM_Max = ToInteger(QTM_DumpMax);
    QTM_PosBar()->SetMaximum(ToInteger(QTM()->Duration()));
    MaxTime()->SetCaption(TimeText(QTM_Max));
}

/// The slider follows the console's player; its ValueChanged seeks only after a person's press.
void Mainform::QTM_ScreenOut_Func() {
    if (FileOpen_Flag)
        QTM_PosBar()->SetValue(ToInteger(QTM()->Position()));
}

} // namespace kirolane
