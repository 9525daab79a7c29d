#include "logic/sound/musicform.h"

#include "logic/shell/mainform.h"
#include "logic/shell/menu.h"
#include "logic/sound/musicform_controls.h"
#include "logic/video/rate_table.h"

namespace kirolane {

namespace {

/// Heights of the pointer in this window that give a level; uneven, and not those of the console's bar.
struct PointerBand {
    std::int32_t first;
    std::int32_t last;
    std::int32_t level;
};

// clang-format off
constexpr PointerBand kPointerBands[] = {
    {86, 87,   0},
    {83, 85,  10},
    {80, 82,  20},
    {77, 79,  30},
    {74, 76,  40},
    {71, 73,  50},
    {66, 70,  60},
    {62, 65,  70},
    {58, 61,  80},
    {54, 57,  90},
    {52, 53, 100},
};
// clang-format on

} // namespace

MusicForm::MusicForm() : Window("MusicForm", kMusicFormDesign) {}

void MusicForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void MusicForm::CreateControls() {
    Window::CreateControls(design::kMusicFormControls);
    QTM_PlayButton()->OnAction = [this] { QTM_PlayButton_Action(); };
    QTM_FrameFreeDownButton()->OnAction = [this] { QTM_FrameFreeDownButton_Action(); };
    QTM_FrameFreeUpButton()->OnAction = [this] { QTM_FrameFreeUpButton_Action(); };
    QTM_PosBar()->OnMouseDown = [this](auto x, auto y) { return QTM_PosBar_MouseDown(x, y); };
    QTM_PosBar()->OnValueChanged = [this] { QTM_PosBar_ValueChanged(); };
    VolumeProgress()->OnMouseMove = [this](auto x, auto y) { VolumeProgress_MouseMove(x, y); };
    Rate()->OnValueChanged = [this] { Rate_ValueChanged(); };
    Rate()->OnMouseUp = [this](auto x, auto y) { Rate_MouseUp(x, y); };
}

void MusicForm::Event_Activate() {
    Instance<Mainform>()->FocusList();
}

void MusicForm::QTM_PlayButton_Action() {
    Instance<Mainform>()->mQTM_PlayStatus_Action();
}

void MusicForm::QTM_FrameFreeDownButton_Action() {
    Instance<Mainform>()->mQTM_FrameFreeDown_Action();
}

void MusicForm::QTM_FrameFreeUpButton_Action() {
    Instance<Mainform>()->mQTM_FrameFreeUp_Action();
}

bool MusicForm::QTM_PosBar_MouseDown(std::int32_t /*x*/, std::int32_t /*y*/) {
    Instance<Mainform>()->mPosBar_Flag = true;
    return false; // the slider tracks the mouse itself
}

void MusicForm::QTM_PosBar_ValueChanged() {
    const auto console = Instance<Mainform>();
    if (QTM()->Movie().IsNil() || !console->mPosBar_Flag)
        return;
    QTM()->SetPosition(QTM_PosBar()->Value());
    console->mPosBar_Flag = false;
}

void MusicForm::VolumeProgress_MouseMove(std::int32_t /*x*/, std::int32_t /*y*/) {
    const auto console = Instance<Mainform>();
    for (const PointerBand& band : kPointerBands) {
        if (MouseY() >= band.first && MouseY() <= band.last) {
            console->mVolume_Flag = band.level;
            VolumeProgress()->SetValue(band.level);
        }
    }
    console->mVolumeSave_Func();
    VolumeLabel()->SetEnabled(true);
    VolumeProgress()->SetEnabled(true);
}

void MusicForm::ApplyRate() {
    const RateRow* row = FindRate(Rate()->Value());
    if (row == nullptr)
        return;
    QTM()->SetRate(row->factor);
    Instance<Mainform>()->mRate_Flag = row->factor;
    RateText()->SetText(std::string(row->caption));
}

void MusicForm::Rate_ValueChanged() {
    ApplyRate();
}

void MusicForm::Rate_MouseUp(std::int32_t /*x*/, std::int32_t /*y*/) {
    ApplyRate();
}

} // namespace kirolane
