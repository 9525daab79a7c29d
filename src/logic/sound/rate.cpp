#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

// The write of the slider applies the rate through its event.

bool Mainform::mSpeedUp_Action() {
    const auto slider = Instance<MusicForm>()->Rate();
    if (slider->Value() >= 0 && slider->Value() <= 9)
        slider->SetValue(slider->Value() + 1);
    return false;
}

bool Mainform::mSpeedDown_Action() {
    const auto slider = Instance<MusicForm>()->Rate();
    if (slider->Value() >= 1 && slider->Value() <= 10)
        slider->SetValue(slider->Value() - 1);
    return false;
}

} // namespace kirolane
