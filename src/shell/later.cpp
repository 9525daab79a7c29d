// Commands that have no effect yet.

#include "shell/mainform.h"

namespace kirolane {

void Mainform::SettingFormShow_Action() {}

void Mainform::AltX_Action() {}
void Mainform::Event_Moved() {}
void Mainform::Event_Activate() {}
void Mainform::Event_Deactivate() {}
void Mainform::Event_Restore() {}

void Mainform::LoopPlay_Action() {}
void Mainform::ListLoopPlay_Action() {}

void Mainform::QTM_Frame5Down_Action() {}
void Mainform::QTM_Frame5Up_Action() {}
void Mainform::QTM_Frame30Down_Action() {}
void Mainform::QTM_Frame30Up_Action() {}
void Mainform::QTM_FrameFreeDown_Action() {}
void Mainform::QTM_FrameFreeUp_Action() {}
void Mainform::QTM_FrameFreeDownButton_Action() {}
void Mainform::QTM_FrameFreeUpButton_Action() {}
void Mainform::QTM_Mark_Action() {}
void Mainform::QTM_MarkSeek_Action() {}
bool Mainform::QTM_PosBar_MouseDown(std::int32_t /*x*/, std::int32_t /*y*/) {
    return false;
}
void Mainform::QTM_PosBar_ValueChanged() {}

void Mainform::Rate_ValueChanged() {}
void Mainform::Rate_MouseUp(std::int32_t /*x*/, std::int32_t /*y*/) {}
bool Mainform::SpeedUp_Action() {
    return false;
}
bool Mainform::SpeedDown_Action() {
    return false;
}

void Mainform::VolumeUp_Action() {}
void Mainform::VolumeDown_Action() {}
void Mainform::VolumeProgress_MouseMove(std::int32_t /*x*/, std::int32_t /*y*/) {}

void Mainform::mQTM_Close_Action() {}
void Mainform::mQTM_PlayStatus_Action() {}
void Mainform::mQTM_Stop_Action() {}
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
