#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/volume_table.h"

namespace kirolane {

/// Applies mVolume_Flag. The bar shows every level as it is.
void Mainform::mVolumeSave_Func() {
    if (!IsLevel(mVolume_Flag))
        return;
    const auto form = Instance<MusicForm>();
    form->QTM()->SetVolume(PlayerVolume(mVolume_Flag));
    form->VolumeProgress()->SetValue(mVolume_Flag);
    form->VolumeLabel()->SetCaption(VolumeText(mVolume_Flag));
}

void Mainform::mVolumeUp_Action() {
    if (mVolume_Flag >= kLoudest)
        return;
    if (mMute_Flag)
        mMute_Func();
    mVolume_Flag = mVolume_Flag + 1;
    mVolumeSave_Func();
}

void Mainform::mVolumeDown_Action() {
    if (mVolume_Flag < 1)
        return;
    if (mMute_Flag)
        mMute_Func();
    mVolume_Flag = mVolume_Flag - 1;
    mVolumeSave_Func();
}

void Mainform::mMute_Func() {
    const auto form = Instance<MusicForm>();
    const auto player = form->QTM();
    if (!mMute_Flag) {
        mCurrent_QTM_Volume = player->Volume();
        player->SetVolume(0);
        form->VolumeLabel()->SetEnabled(false);
        form->VolumeProgress()->SetEnabled(false);
        mMute_Flag = true;
    } else {
        player->SetVolume(mCurrent_QTM_Volume);
        form->VolumeLabel()->SetEnabled(true);
        form->VolumeProgress()->SetEnabled(true);
        mMute_Flag = false;
    }
}

} // namespace kirolane
