#include "logic/display/monitorform.h"

#include "logic/display/monitorform_controls.h"
#include "logic/shell/mainform.h"
#include "logic/shell/menu.h"
#include "logic/shell/menu_table.h"

#include <iterator>

namespace kirolane {

namespace {

/// A key of the monitor window and the console's command that it runs.
struct Forward {
    std::string_view item;
    void (Mainform::*command)();
};

// clang-format off
constexpr Forward kForwards[] = {
    {"AltX_Key",             &Mainform::AltX_Action},
    {"CloseKey",             &Mainform::QTM_Close_Action},
    {"Frame30DownKey",       &Mainform::QTM_Frame30Down_Action},
    {"Frame30UpKey",         &Mainform::QTM_Frame30Up_Action},
    {"Frame5DownKey",        &Mainform::QTM_Frame5Down_Action},
    {"Frame5UpKey",          &Mainform::QTM_Frame5Up_Action},
    {"FrameFreeDownKey",     &Mainform::QTM_FrameFreeDown_Action},
    {"FrameFreeUpKey",       &Mainform::QTM_FrameFreeUp_Action},
    {"ListLoopKey",          &Mainform::ListLoopPlay_Action},
    {"LoopKey",              &Mainform::LoopPlay_Action},
    {"MarkKey",              &Mainform::QTM_Mark_Action},
    {"MarkSeekKey",          &Mainform::QTM_MarkSeek_Action},
    {"MuteKey",              &Mainform::Mute_Func},
    {"PlayStatusChangeKey",  &Mainform::QTM_PlayStatus_Action},
    {"Shortcut_Setting",     &Mainform::SettingFormShow_Action},
    {"Shortcut_Ver",         &Mainform::VerFormShow_Action},
    {"StopKey",              &Mainform::QTM_Stop_Action},
    {"VolumeDownKey",        &Mainform::VolumeDown_Action},
    {"VolumeUpKey",          &Mainform::VolumeUp_Action},
    {"mFrame30DownKey",      &Mainform::mQTM_Frame30Down_Action},
    {"mFrame30UpKey",        &Mainform::mQTM_Frame30Up_Action},
    {"mFrame5DownKey",       &Mainform::mQTM_Frame5Down_Action},
    {"mFrame5UpKey",         &Mainform::mQTM_Frame5Up_Action},
    {"mFrameFreeDownKey",    &Mainform::mQTM_FrameFreeDown_Action},
    {"mFrameFreeUpKey",      &Mainform::mQTM_FrameFreeUp_Action},
    {"mListLoopKey",         &Mainform::mListLoopPlay_Action},
    {"mLoopKey",             &Mainform::mLoopPlay_Action},
    {"mMarkKey",             &Mainform::mQTM_MarkSeek_Action}, // sic: here it jumps and cannot set a mark
    {"mMarkSeekKey",         &Mainform::mQTM_MarkSeek_Action},
    {"mMuteKey",             &Mainform::mMute_Func},
    {"mPlayStatusChangeKey", &Mainform::mQTM_PlayStatus_Action},
    {"mCloseKey",            &Mainform::mQTM_Close_Action},
    {"mVolumeDownKey",       &Mainform::mVolumeDown_Action},
    {"mStopKey",             &Mainform::mQTM_Stop_Action},
    {"mVolumeUpKey",         &Mainform::mVolumeUp_Action},
};

/// Enabled without condition while this window is in front: a command that cannot act now copes itself.
constexpr std::string_view kEnabled[] = {
    "AltX_Key",          "OpenKey",           "PlayStatusChangeKey", "StopKey",           "CloseKey",
    "MarkKey",           "MarkSeekKey",       "FrameFreeDownKey",    "FrameFreeUpKey",    "Frame30DownKey",
    "Frame30UpKey",      "Frame5DownKey",     "Frame5UpKey",         "LoopKey",           "ListLoopKey",
    "VolumeDownKey",     "VolumeUpKey",       "MuteKey",             "FileQuit",          "mOpenKey",
    "mPlayStatusChangeKey", "mStopKey",       "mCloseKey",           "mMarkKey",          "mMarkSeekKey",
    "mFrameFreeDownKey", "mFrameFreeUpKey",   "mFrame30DownKey",     "mFrame30UpKey",     "mFrame5DownKey",
    "mFrame5UpKey",      "mLoopKey",          "mListLoopKey",        "mVolumeDownKey",    "mVolumeUpKey",
    "mMuteKey",
};
// clang-format on

constexpr bool AllInMenu() {
    for (const Forward& row : kForwards)
        if (!IsInMenu(row.item))
            return false;
    for (const std::string_view item : kEnabled)
        if (!IsInMenu(item))
            return false;
    return true;
}

// Every command but the four of the speed; OpenKey, mOpenKey and FileQuit have handlers of their own.
static_assert(std::size(kForwards) + 3 == 38);
static_assert(std::size(kEnabled) == 36); // the two of the application's menu enable themselves
static_assert(AllInMenu());

} // namespace

MonitorForm::MonitorForm() : Window("MonitorForm", kMonitorFormDesign) {}

void MonitorForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void MonitorForm::CreateControls() {
    Window::CreateControls(design::kMonitorFormControls);
}

void MonitorForm::AddMenuHandlers() {
    for (const Forward& row : kForwards)
        BindMenu(row.item, [command = row.command] {
            ((*Instance<Mainform>()).*command)();
            return false;
        });
    BindMenu("OpenKey", [this] { return OpenKey_Action(); });
    BindMenu("mOpenKey", [this] { return OpenKey_Action(); });
    BindMenu("FileQuit", [this] { return FileQuit_Action(); });
}

void MonitorForm::Event_Activate() {
    if (!Instance<Mainform>()->AltX_Flag)
        Instance<Mainform>()->Show();
}

void MonitorForm::Event_EnableMenuItems() {
    for (const std::string_view item : kEnabled)
        MenuItem(item)->SetEnabled(true);
}

bool MonitorForm::OpenKey_Action() {
    return Instance<Mainform>()->OpenKey_Action();
}

bool MonitorForm::FileQuit_Action() {
    Close();
    return false;
}

} // namespace kirolane
