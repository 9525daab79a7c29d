#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

void Mainform::mQTM_PlayStatus_Action() {
    if (Instance<MusicForm>()->QTM()->Movie().IsNil())
        return;
    if (mPlay_Flag)
        mQTM_Pause_Action();
    else
        mQTM_Play_Action();
}

/// Goes on from where the player stands: the slider gives no position here.
void Mainform::mQTM_Play_Action() {
    const auto form = Instance<MusicForm>();
    form->QTM()->Play();
    form->QTM()->SetRate(mRate_Flag);
    mPlay_Flag = true;
    form->PlayModeLabel()->SetCaption("再生中");
}

void Mainform::mQTM_Pause_Action() {
    const auto form = Instance<MusicForm>();
    form->QTM()->Stop();
    mPlay_Flag = false;
    form->PlayModeLabel()->SetCaption("一時停止");
}

void Mainform::mQTM_Stop_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    form->QTM()->Stop();
    form->QTM()->SetPosition(0.0);
    form->QTM_PosBar()->SetValue(0);
    mPlay_Flag = false;
    form->PlayModeLabel()->SetCaption("停止");
}

} // namespace kirolane
