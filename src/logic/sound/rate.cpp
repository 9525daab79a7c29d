#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"
#include "logic/video/rate_table.h"

namespace kirolane {

// The write of the slider applies the rate through its event.

void Mainform::mSpeedUp_Action() {
    const auto slider = Instance<MusicForm>()->Rate();
    if (slider->Value() >= kSlowest && slider->Value() < kFastest)
        slider->SetValue(slider->Value() + 1);
}

void Mainform::mSpeedDown_Action() {
    const auto slider = Instance<MusicForm>()->Rate();
    if (slider->Value() > kSlowest && slider->Value() <= kFastest)
        slider->SetValue(slider->Value() - 1);
}

} // namespace kirolane
