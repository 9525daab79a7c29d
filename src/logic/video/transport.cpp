#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

namespace kirolane {

void Mainform::QTM_PlayButton_Action() {
    QTM_PlayStatus_Action();
}

void Mainform::QTM_PlayStatus_Action() {
    if (QTM()->Movie().IsNil())
        return;
    if (Play_Flag)
        QTM_Pause_Action();
    else
        QTM_Play_Action();
}

// The slider is the reference of position: every start takes both players there, to a whole second, before
// they play and once more behind the rate. Play and Stop fire the console player's events before they return;
// the handlers below do no harm to what a command has done or is about to do.

void Mainform::QTM_Play_Action() {
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetPosition(QTM_PosBar()->Value());
    monitor->QTM()->SetPosition(QTM_PosBar()->Value());
    QTM()->Play();
    monitor->QTM()->Play();
    QTM()->SetRate(Rate_Flag);
    monitor->QTM()->SetRate(Rate_Flag);
    Play_Flag = true;
    PlayModeLabel()->SetCaption("再生中");
    if (!QTM()->Movie().IsNil()) {
        QTM()->SetPosition(QTM_PosBar()->Value());
        monitor->QTM()->SetPosition(QTM_PosBar()->Value());
    }
}

void Mainform::QTM_Pause_Action() {
    QTM()->Stop();
    Instance<MonitorForm>()->QTM()->Stop();
    Play_Flag = false;
    PlayModeLabel()->SetCaption("一時停止");
}

void Mainform::QTM_Stop_Action() {
    if (QTM()->Movie().IsNil())
        return;
    QTM()->Stop();
    QTM()->SetPosition(0.0);
    QTM()->Refresh(true);
    const auto monitor = Instance<MonitorForm>();
    monitor->QTM()->Stop();
    monitor->QTM()->SetPosition(0.0);
    monitor->QTM()->Refresh(true);
    QTM_PosBar()->SetValue(0);
    Play_Flag = false;
    PlayModeLabel()->SetCaption("停止");
}

void Mainform::QTM_Play() {
    const auto monitor = Instance<MonitorForm>();
    QTM()->SetPosition(QTM_PosBar()->Value());
    monitor->QTM()->SetPosition(QTM_PosBar()->Value());
    monitor->QTM()->Play();
    QTM()->SetRate(Rate_Flag);
    monitor->QTM()->SetRate(Rate_Flag);
    Play_Flag = true;
    PlayModeLabel()->SetCaption("再生中");
    if (!QTM()->Movie().IsNil()) {
        QTM()->SetPosition(QTM_PosBar()->Value());
        monitor->QTM()->SetPosition(QTM_PosBar()->Value());
    }
    FocusList();
}

void Mainform::QTM_Stop() {
    Instance<MonitorForm>()->QTM()->Stop();
    Play_Flag = false;
    PlayModeLabel()->SetCaption("一時停止");
    FocusList();
}

} // namespace kirolane
