#pragma once

#include "contract/bevelbutton.h"
#include "contract/movieplayer.h"
#include "contract/progressbar.h"
#include "contract/slider.h"
#include "contract/statictext.h"
#include "contract/window.h"

#include <cstdint>

namespace kirolane {

/// The small window of an open sound: its player and controls, on the screen only while a sound is open. Its
/// state and nearly all that it does are the console's; a control has the name of its twin there, but for
/// PosTime.
class MusicForm : public Window {
public:
    MusicForm();

    Ref<StaticText> FileLabel() const { return Control<StaticText>("FileLabel"); }
    Ref<StaticText> PlayModeLabel() const { return Control<StaticText>("PlayModeLabel"); }
    Ref<StaticText> MediaType() const { return Control<StaticText>("MediaType"); }
    Ref<ProgressBar> VolumeProgress() const { return Control<ProgressBar>("VolumeProgress"); }
    Ref<StaticText> VolumeLabel() const { return Control<StaticText>("VolumeLabel"); }
    Ref<Slider> QTM_PosBar() const { return Control<Slider>("QTM_PosBar"); }
    Ref<StaticText> PosTime() const { return Control<StaticText>("PosTime"); }
    Ref<StaticText> MaxTime() const { return Control<StaticText>("MaxTime"); }
    Ref<BevelButton> QTM_PlayButton() const { return Control<BevelButton>("QTM_PlayButton"); }
    Ref<BevelButton> QTM_FrameFreeDownButton() const {
        return Control<BevelButton>("QTM_FrameFreeDownButton");
    }
    Ref<BevelButton> QTM_FrameFreeUpButton() const { return Control<BevelButton>("QTM_FrameFreeUpButton"); }
    Ref<StaticText> RateText() const { return Control<StaticText>("RateText"); }
    Ref<Slider> Rate() const { return Control<Slider>("Rate"); }
    Ref<MoviePlayer> QTM() const { return Control<MoviePlayer>("QTM"); }

    void Layout() override;
    void CreateControls() override;

    /// Leaves the keyboard to the console's list in front.
    void Event_Activate() override;

    // Forward to the console, or write its fields.
    void QTM_PlayButton_Action();
    void QTM_FrameFreeDownButton_Action();
    void QTM_FrameFreeUpButton_Action();
    bool QTM_PosBar_MouseDown(std::int32_t x, std::int32_t y);

    /// The first change after a press is a person's seek.
    void QTM_PosBar_ValueChanged();
    /// The level follows the pointer over the bar, pressed or not, in steps of ten.
    void VolumeProgress_MouseMove(std::int32_t x, std::int32_t y);
    void Rate_ValueChanged();
    void Rate_MouseUp(std::int32_t x, std::int32_t y);
    /// The slider's step to the player, whether or not it holds a sound, and to every later start.
    void ApplyRate();
};

} // namespace kirolane
