#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/video/rate_table.h"

namespace kirolane {

/// The slider's step to both players at once, also to a paused or empty one, and to every later start.
void Mainform::ApplyRate() {
    const RateRow* row = FindRate(Rate()->Value());
    if (row == nullptr)
        return;
    QTM()->SetRate(row->factor);
    Instance<MonitorForm>()->QTM()->SetRate(row->factor);
    Rate_Flag = row->factor;
    RateText()->SetText(std::string(row->caption));
}

void Mainform::Rate_ValueChanged() {
    ApplyRate();
}

void Mainform::Rate_MouseUp(std::int32_t /*x*/, std::int32_t /*y*/) {
    ApplyRate();
}

// The write of the slider applies the rate through its event.

void Mainform::SpeedUp_Action() {
    const auto slider = Rate();
    if (slider->Value() >= kSlowest && slider->Value() < kFastest)
        slider->SetValue(slider->Value() + 1);
}

void Mainform::SpeedDown_Action() {
    const auto slider = Rate();
    if (slider->Value() > kSlowest && slider->Value() <= kFastest)
        slider->SetValue(slider->Value() - 1);
}

} // namespace kirolane
