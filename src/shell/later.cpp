// Commands that have no effect yet.

#include "shell/mainform.h"

namespace kirolane {

void Mainform::SettingFormShow_Action() {}

void Mainform::mQTM_Close_Action() {}
void Mainform::mQTM_PlayStatus_Action() {}
void Mainform::mQTM_Play_Action() {}
void Mainform::mQTM_Stop_Action() {}
void Mainform::mQTM_PosTime_Func() {}
void Mainform::mQTM_ScreenOut_Func() {}
void Mainform::mQTM_TImeLoop_Func() {} // sic
void Mainform::mLoopPlay_Action() {}
void Mainform::mListLoopPlay_Action() {}
void Mainform::mQTM_Frame5Down_Action() {}
void Mainform::mQTM_Frame5Up_Action() {}
void Mainform::mQTM_Frame30Down_Action() {}
void Mainform::mQTM_Frame30Up_Action() {}
void Mainform::mQTM_FrameFreeDown_Action() {}
void Mainform::mQTM_FrameFreeUp_Action() {}
void Mainform::mQTM_Mark_Action() {}
void Mainform::mQTM_MarkSeek_Action() {}
bool Mainform::mSpeedUp_Action() {
    return false;
}
bool Mainform::mSpeedDown_Action() {
    return false;
}
void Mainform::mVolumeUp_Action() {}
void Mainform::mVolumeDown_Action() {}
void Mainform::mMute_Func() {}

} // namespace kirolane
