#include "display/monitorform.h"
#include "shell/mainform.h"
#include "video/volume_table.h"

namespace kirolane {

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

/// Holds the player's own volume, not the level: level, label text and bar stay as they are.
void Mainform::Mute_Func() {
    const auto player = Instance<MonitorForm>()->QTM();
    if (!Mute_Flag) {
        Current_QTM_Volume = player->Volume();
        player->SetVolume(0);
    } else {
        player->SetVolume(Current_QTM_Volume);
    }
    VolumeLabel()->SetEnabled(Mute_Flag);
    VolumeProgress()->SetEnabled(Mute_Flag);
    Mute_Flag = !Mute_Flag;
}

} // namespace kirolane
