#include "contract/numbers.h"
#include "logic/display/monitorform.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"
#include "logic/video/free_steps.h"

namespace kirolane {

// Nothing here looks at Play_Flag, and no limit is tested: each player keeps itself inside its movie.

/// Moves each player from where it stands, so that a drift between them stays.
void Mainform::SeekBy(double seconds) {
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetPosition(QTM()->Position() + seconds);
    monitor->QTM()->SetPosition(monitor->QTM()->Position() + seconds);
    QTM_PosBar()->SetValue(ToInteger(QTM()->Position())); // what the player really took
    QTM()->Refresh(true);
    monitor->QTM()->Refresh(true);
}

void Mainform::QTM_Frame5Down_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(-5.0);
}

void Mainform::QTM_Frame5Up_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(5.0);
}

void Mainform::QTM_Frame30Down_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(-30.0);
}

void Mainform::QTM_Frame30Up_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(30.0);
}

void Mainform::QTM_FrameFreeDown_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(-FreeStepSeconds(Setting_Data(line::kFreeSeek)));
}

void Mainform::QTM_FrameFreeUp_Action() {
    if (!QTM()->Movie().IsNil())
        SeekBy(FreeStepSeconds(Setting_Data(line::kFreeSeek)));
}

void Mainform::QTM_FrameFreeDownButton_Action() {
    QTM_FrameFreeDown_Action();
}

void Mainform::QTM_FrameFreeUpButton_Action() {
    QTM_FrameFreeUp_Action();
}

void Mainform::QTM_Mark_Action() {
    if (QTM()->Movie().IsNil())
        return;
    Mark_Pos = ToInteger(QTM()->Position());
    Mark_Flag = true;
}

/// Takes both players to one second, which clears a drift. The slider follows at the next tick.
void Mainform::QTM_MarkSeek_Action() {
    if (QTM()->Movie().IsNil() || !Mark_Flag)
        return;
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetPosition(Mark_Pos);
    monitor->QTM()->SetPosition(Mark_Pos);
    QTM()->SetRate(Rate_Flag);
    monitor->QTM()->SetRate(Rate_Flag);
}

bool Mainform::QTM_PosBar_MouseDown(std::int32_t /*x*/, std::int32_t /*y*/) {
    PosBar_Flag = true;
    return false; // the slider tracks the mouse itself
}

/// Every write of the slider comes here. Only the first after a press is a seek, be it the tick's.
void Mainform::QTM_PosBar_ValueChanged() {
    if (QTM()->Movie().IsNil() || !PosBar_Flag)
        return;
    QTM()->SetPosition(QTM_PosBar()->Value());
    Instance<MonitorForm>()->QTM()->SetPosition(QTM_PosBar()->Value());
    PosBar_Flag = false;
}

} // namespace kirolane
