#include "shell/mainform.h"
#include "video/time_text.h"

namespace kirolane {

void Mainform::TimeTimer_Action() {}

void Mainform::QTM_MaxTime_Func() {
    QTM_DumpMax = QTM()->Duration();
    QTM_Max = ToInteger(QTM_DumpMax);
    QTM_PosBar()->SetMaximum(ToInteger(QTM()->Duration()));
    MaxTime()->SetCaption(TimeText(QTM_Max));
}

} // namespace kirolane
