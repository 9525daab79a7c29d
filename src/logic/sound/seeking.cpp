#include "contract/numbers.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/free_steps.h"

namespace kirolane {

namespace {

void MovePlayer(const Ref<MusicForm>& form, double seconds) {
    form->QTM()->SetPosition(form->QTM()->Position() + seconds);
}

/// Ends every seek. The button is disabled only while nothing is open, which the seeks test before.
void PlayIfButtonIsOff(const Ref<MusicForm>& form) {
    if (!form->QTM_PlayButton()->Enabled())
        form->QTM()->Play();
}

} // namespace

void Mainform::mQTM_Frame5Down_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, -5.0);
    PlayIfButtonIsOff(form);
}

void Mainform::mQTM_Frame5Up_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, 5.0);
    PlayIfButtonIsOff(form);
}

/// Alone among the seeks of a sound it moves the slider at once; the others leave that to the tick.
void Mainform::mQTM_Frame30Down_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, -30.0);
    form->QTM_PosBar()->SetValue(ToInteger(form->QTM()->Position()));
    PlayIfButtonIsOff(form);
}

void Mainform::mQTM_Frame30Up_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, 30.0);
    PlayIfButtonIsOff(form);
}

void Mainform::mQTM_FrameFreeDown_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, -FreeStepSeconds(Setting_Data(line::kSoundFreeSeek)));
    PlayIfButtonIsOff(form);
}

void Mainform::mQTM_FrameFreeUp_Action() {
    const auto form = Instance<MusicForm>();
    if (form->QTM()->Movie().IsNil())
        return;
    MovePlayer(form, FreeStepSeconds(Setting_Data(line::kSoundFreeSeek)));
    PlayIfButtonIsOff(form);
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
