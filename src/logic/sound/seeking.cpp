#include "contract/numbers.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/free_steps.h"

namespace kirolane {

/// Ends with a start where the button is off. It is only while nothing is open, which the seeks test before.
void Mainform::mSeekBy(double seconds) {
    const auto form = Instance<MusicForm>();
    form->QTM()->SetPosition(form->QTM()->Position() + seconds);
    if (!form->QTM_PlayButton()->Enabled())
        form->QTM()->Play();
}

void Mainform::mQTM_Frame5Down_Action() {
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil())
        mSeekBy(-5.0);
}

void Mainform::mQTM_Frame5Up_Action() {
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil())
        mSeekBy(5.0);
}

/// Alone among the seeks of a sound it moves the slider at once; the others leave that to the tick.
void Mainform::mQTM_Frame30Down_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    mSeekBy(-30.0);
    form->QTM_PosBar()->SetValue(ToInteger(form->QTM()->Position()));
}

void Mainform::mQTM_Frame30Up_Action() {
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil())
        mSeekBy(30.0);
}

void Mainform::mQTM_FrameFreeDown_Action() {
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil())
        mSeekBy(-FreeStepSeconds(Setting_Data(line::kSoundFreeSeek)));
}

void Mainform::mQTM_FrameFreeUp_Action() {
    if (!Instance<MusicForm>()->QTM()->Movie().IsNil())
        mSeekBy(FreeStepSeconds(Setting_Data(line::kSoundFreeSeek)));
}

void Mainform::mQTM_Mark_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    mMark_Pos = ToInteger(form->QTM()->Position());
    mMark_Flag = true;
}

void Mainform::mQTM_MarkSeek_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil() || !mMark_Flag)
        return;
    form->QTM()->SetPosition(mMark_Pos);
    form->QTM()->SetRate(mRate_Flag);
}

} // namespace kirolane
