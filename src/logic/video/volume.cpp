#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/video/volume_table.h"

namespace kirolane {

namespace {

/// Heights of the pointer in the window that give a level; they fit the bar's design place.
struct PointerBand {
    std::int32_t first;
    std::int32_t last;
    std::int32_t level;
};

// clang-format off
constexpr PointerBand kPointerBands[] = {
    {394, 395,   0},
    {391, 393,  10},
    {388, 390,  20},
    {385, 387,  30},
    {382, 384,  40},
    {379, 381,  50},
    {375, 378,  60},
    {371, 374,  70},
    {367, 370,  80},
    {364, 366,  90},
    {360, 363, 100},
};
// clang-format on

} // namespace

/// Applies Volume_Flag. Only the monitor's player is ever heard.
void Mainform::VolumeSave_Func() {
    QTM()->SetVolume(0);
    if (!IsLevel(Volume_Flag))
        return;
    Instance<MonitorForm>()->QTM()->SetVolume(PlayerVolume(Volume_Flag));
    // The bar lags by one at these three levels and never shows 36.
    if (Volume_Flag == 35 || Volume_Flag == 36)
        VolumeProgress()->SetValue(Volume_Flag - 1);
    else if (Volume_Flag != 34)
        VolumeProgress()->SetValue(Volume_Flag);
    VolumeLabel()->SetCaption(VolumeText(Volume_Flag));
}

void Mainform::VolumeUp_Action() {
    if (Volume_Flag >= kLoudest)
        return;
    if (Mute_Flag)
        Mute_Func();
    Volume_Flag = Volume_Flag + 1;
    VolumeSave_Func();
}

void Mainform::VolumeDown_Action() {
    if (Volume_Flag < 1)
        return;
    if (Mute_Flag)
        Mute_Func();
    Volume_Flag = Volume_Flag - 1;
    VolumeSave_Func();
}

/// Holds the player's own volume, not the level: level, label text and bar stay as they are.
void Mainform::Mute_Func() {
    const auto player = Instance<MonitorForm>()->QTM();
    if (!Mute_Flag) {
        Current_QTM_Volume = player->Volume();
        player->SetVolume(0);
        VolumeLabel()->SetEnabled(false);
        VolumeProgress()->SetEnabled(false);
        Mute_Flag = true;
    } else {
        player->SetVolume(Current_QTM_Volume);
        VolumeLabel()->SetEnabled(true);
        VolumeProgress()->SetEnabled(true);
        Mute_Flag = false;
    }
}

/// The level follows the pointer over the bar, pressed or not, in steps of ten.
void Mainform::VolumeProgress_MouseMove(std::int32_t /*x*/, std::int32_t /*y*/) {
    for (const PointerBand& band : kPointerBands) {
        if (MouseY() >= band.first && MouseY() <= band.last) {
            Volume_Flag = band.level;
            VolumeProgress()->SetValue(band.level);
        }
    }
    VolumeSave_Func();
    VolumeLabel()->SetEnabled(true);
    VolumeProgress()->SetEnabled(true);
}

} // namespace kirolane
