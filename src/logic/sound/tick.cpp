#include "contract/numbers.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/time_text.h"

namespace kirolane {

/// The window's title tells the movie's times; the sound's own stand in the window.
void Mainform::mQTM_PosTime_Func() {
    const auto form = Instance<MusicForm>();
    form->PosTime()->SetCaption(TimeText(ToInteger(form->QTM()->Position())));
    form->SetTitle(PosTIme()->Caption() + " / " + MaxTime()->Caption());
}

void Mainform::mQTM_MaxTime_Func() {
    const auto form = Instance<MusicForm>();
    mQTM_DumpMax = form->QTM()->Duration();
    mQTM_Max = ToInteger(mQTM_DumpMax);
    form->QTM_PosBar()->SetMaximum(ToInteger(form->QTM()->Duration()));
    form->MaxTime()->SetCaption(TimeText(mQTM_Max));
}

void Mainform::mQTM_ScreenOut_Func() {
    const auto form = Instance<MusicForm>();
    if (mFileOpen_Flag)
        form->QTM_PosBar()->SetValue(ToInteger(form->QTM()->Position()));
}

} // namespace kirolane
