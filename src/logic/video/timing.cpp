#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/video/drift_text.h"

namespace kirolane {

/// Shows by how much the monitor's player is ahead of the console's. A read-out only: nothing is corrected.
void Mainform::QTM_Timing_Func() {
    const auto console = QTM();
    const auto monitor = Instance<MonitorForm>()->QTM();
    const auto drift = static_cast<float>(monitor->Position() - console->Position());
    if (monitor->Position() == console->Position())
        TimingLabel()->SetText(kNoDriftText);
    else if (console->Position() < monitor->Position())
        TimingLabel()->SetText(DriftAheadText(drift));
    else if (monitor->Position() < console->Position())
        TimingLabel()->SetText(DriftBehindText(drift));
}

} // namespace kirolane
