#include "logic/shell/mainform.h"
#include "logic/shell/menu_table.h"

#include <iterator>

namespace kirolane {

namespace {

/// An item that runs one command and leaves the rest to the platform.
struct Forward {
    std::string_view item;
    void (Mainform::*command)();
};

/// An item with a handler of its own.
struct Handler {
    std::string_view item;
    bool (Mainform::*handler)();
};

// clang-format off
constexpr Forward kForwards[] = {
    {"Shortcut_Ver",         &Mainform::VerFormShow_Action},
    {"Shortcut_Setting",     &Mainform::SettingFormShow_Action},
    {"PlayStatusChangeKey",  &Mainform::QTM_PlayStatus_Action},
    {"StopKey",              &Mainform::QTM_Stop_Action},
    {"CloseKey",             &Mainform::QTM_Close_Action},
    {"MarkKey",              &Mainform::QTM_Mark_Action},
    {"MarkSeekKey",          &Mainform::QTM_MarkSeek_Action},
    {"FrameFreeDownKey",     &Mainform::QTM_FrameFreeDown_Action},
    {"FrameFreeUpKey",       &Mainform::QTM_FrameFreeUp_Action},
    {"Frame30DownKey",       &Mainform::QTM_Frame30Down_Action},
    {"Frame30UpKey",         &Mainform::QTM_Frame30Up_Action},
    {"Frame5DownKey",        &Mainform::QTM_Frame5Down_Action},
    {"Frame5UpKey",          &Mainform::QTM_Frame5Up_Action},
    {"LoopKey",              &Mainform::LoopPlay_Action},
    {"ListLoopKey",          &Mainform::ListLoopPlay_Action},
    {"VolumeUpKey",          &Mainform::VolumeUp_Action},
    {"VolumeDownKey",        &Mainform::VolumeDown_Action},
    {"MuteKey",              &Mainform::Mute_Func},
    {"mPlayStatusChangeKey", &Mainform::mQTM_PlayStatus_Action},
    {"mStopKey",             &Mainform::mQTM_Stop_Action},
    {"mCloseKey",            &Mainform::mQTM_Close_Action},
    {"mMarkKey",             &Mainform::mQTM_Mark_Action},
    {"mMarkSeekKey",         &Mainform::mQTM_MarkSeek_Action},
    {"mFrameFreeDownKey",    &Mainform::mQTM_FrameFreeDown_Action},
    {"mFrameFreeUpKey",      &Mainform::mQTM_FrameFreeUp_Action},
    {"mFrame30DownKey",      &Mainform::mQTM_Frame30Down_Action},
    {"mFrame30UpKey",        &Mainform::mQTM_Frame30Up_Action},
    {"mFrame5DownKey",       &Mainform::mQTM_Frame5Down_Action},
    {"mFrame5UpKey",         &Mainform::mQTM_Frame5Up_Action},
    {"mLoopKey",             &Mainform::mLoopPlay_Action},
    {"mListLoopKey",         &Mainform::mListLoopPlay_Action},
    {"mVolumeUpKey",         &Mainform::mVolumeUp_Action},
    {"mVolumeDownKey",       &Mainform::mVolumeDown_Action},
    {"mMuteKey",             &Mainform::mMute_Func},
    {"AltX_Key",             &Mainform::AltX_Action},
};

constexpr Handler kHandlers[] = {
    {"OpenKey",              &Mainform::OpenKey_Action},
    {"mOpenKey",             &Mainform::mOpenKey_Action},
    {"SpeedUp",              &Mainform::SpeedUp_Action},
    {"SpeedDown",            &Mainform::SpeedDown_Action},
    {"mSpeedUp",             &Mainform::mSpeedUp_Action},
    {"mSpeedDown",           &Mainform::mSpeedDown_Action},
};
// clang-format on

template <class Row, std::size_t N> constexpr bool AllInMenu(const Row (&rows)[N]) {
    for (const Row& row : rows)
        if (!IsInMenu(row.item))
            return false;
    return true;
}

// Every command but FileQuit, which stays the platform's.
static_assert(std::size(kForwards) + std::size(kHandlers) == 41);
static_assert(AllInMenu(kForwards) && AllInMenu(kHandlers));

} // namespace

void Mainform::AddMenuHandlers() {
    for (const Forward& row : kForwards)
        BindMenu(row.item, [this, command = row.command] {
            (this->*command)();
            return false;
        });
    for (const Handler& row : kHandlers)
        BindMenu(row.item, [this, handler = row.handler] { return (this->*handler)(); });
}

/// Opens the selected row of the list in front, whatever side the key belongs to.
bool Mainform::OpenKey_Action() {
    const std::int32_t page = ListTab()->Value();
    if (page == 0 && StrGrid()->ListCount() > 0)
        StrGridDblClick_Action();
    if (page == 1 && mStrGrid()->ListCount() > 0)
        mStrGridDblClick_Action();
    return false;
}

bool Mainform::mOpenKey_Action() {
    return OpenKey_Action();
}

} // namespace kirolane
