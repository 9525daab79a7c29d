#pragma once

#include "contract/menuitem.h"
#include "logic/shell/mainform.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

/// All commands of the program: menus, keys, what they run and where. The monitor window's differences stand
/// in logic/display/monitorform.cpp, the second keys that some desktops need in the windowing back end.
namespace kirolane {

/// The windows in which a command is bound. It is enabled there, whatever the show is doing: one that cannot
/// act now copes itself. Elsewhere it is disabled, but for the quit item, which without a handler ends the
/// program. AltX_Key alone goes off in the console, where the settings hide the monitor (ApplySettings).
enum class Where : std::uint8_t { Both, Console, Monitor };

/// A method of the console's. It knows by itself whether it is there: under sanitizers g++ cannot compare a
/// pointer to a member with null at compile time.
struct Command {
    using Method = void (Mainform::*)();
    constexpr Command() = default;
    constexpr Command(Method method) : method(method), there(true) {}
    void RunOn(Mainform& console) const { (console.*method)(); }

    Method method = nullptr;
    bool there = false;
};

struct MenuRow {
    std::string_view name;
    std::string_view text;          ///< "-" for a separator, which has no more than a name
    std::string_view shortcut = {}; ///< modifiers and key joined by "+"
    Command command = {};           ///< FileQuit alone has none: the audience's window closes itself
    bool repeats = false;           ///< while the key is held down
    Where where = Where::Both;
    MenuRole role = MenuRole::Plain;
};

inline constexpr bool kOnce = false;
inline constexpr bool kRepeats = true;

struct MenuTable {
    std::string_view name;
    std::string_view text;
    std::span<const MenuRow> rows;
};

// clang-format off
inline constexpr MenuRow kControllerRows[] = {
    {"FileQuit",             "&Quit",            "Cmd+Q",                    {},                                     kOnce, Where::Monitor, MenuRole::Quit},
    {"Shortcut_Ver",         "バージョン情報",   "",                         &Mainform::VerFormShow_Action,          kOnce, Where::Both, MenuRole::About},
    {"Shortcut_Setting",     "環境設定",         "Cmd+,",                    &Mainform::SettingFormShow_Action,      kOnce, Where::Both, MenuRole::Preferences},
    {"OpenKey",              "ファイルを開く",   "return",                   &Mainform::OpenKey_Action},
    {"PlayStatusChangeKey",  "一時停止・再生",   "Space",                    &Mainform::QTM_PlayStatus_Action},
    {"StopKey",              "停止",             "Shift+b",                  &Mainform::QTM_Stop_Action},
    {"CloseKey",             "ファイルを閉じる", "Shift+n",                  &Mainform::QTM_Close_Action},
    {"UntitledSeparator3",   "-"},
    {"MarkKey",              "現在位置をマーク", "Cmd+.",                    &Mainform::QTM_Mark_Action},
    {"MarkSeekKey",          "マーク位置に移動", "Cmd+/",                    &Mainform::QTM_MarkSeek_Action},
    {"UntitledSeparator",    "-"},
    {"FrameFreeDownKey",     "指定時間戻す",     "Option+left",              &Mainform::QTM_FrameFreeDown_Action,    kRepeats},
    {"FrameFreeUpKey",       "指定時間進める",   "Option+right",             &Mainform::QTM_FrameFreeUp_Action,      kRepeats},
    {"Frame30DownKey",       "30秒戻す",         "Cmd+left",                 &Mainform::QTM_Frame30Down_Action,      kRepeats},
    {"Frame30UpKey",         "30秒進める",       "Cmd+right",                &Mainform::QTM_Frame30Up_Action,        kRepeats},
    {"Frame5DownKey",        "5秒戻す",          "Cmd+Option+left",          &Mainform::QTM_Frame5Down_Action,       kRepeats},
    {"Frame5UpKey",          "5秒進める",        "Cmd+Option+right",         &Mainform::QTM_Frame5Up_Action,         kRepeats},
    {"UntitledSeparator1",   "-"},
    {"LoopKey",              "単一ループ設定",   "Shift+z",                  &Mainform::LoopPlay_Action},
    {"ListLoopKey",          "リストループ設定", "Shift+x",                  &Mainform::ListLoopPlay_Action},
    {"UntitledSeparator2",   "-"},
    {"SpeedUp",              "スピードを上げる", "Shift+right",              &Mainform::SpeedUp_Action,              kRepeats, Where::Console},
    {"SpeedDown",            "スピードを下げる", "Shift+left",               &Mainform::SpeedDown_Action,            kRepeats, Where::Console},
    {"UntitledSeparator7",   "-"},
    {"VolumeUpKey",          "ボリューム　＋",   "Cmd+up",                   &Mainform::VolumeUp_Action,             kRepeats},
    {"VolumeDownKey",        "ボリューム　−",    "Cmd+down",                 &Mainform::VolumeDown_Action,           kRepeats},
    {"MuteKey",              "ミュート",         "Option+down",              &Mainform::Mute_Func},
};

inline constexpr MenuRow kController2Rows[] = {
    {"mOpenKey",             "ファイルを開く",   "return",                   &Mainform::OpenKey_Action},
    {"mPlayStatusChangeKey", "一時停止・再生",   "Option+space",             &Mainform::mQTM_PlayStatus_Action},
    {"mStopKey",             "停止",             "Control+b",                &Mainform::mQTM_Stop_Action},
    {"mCloseKey",            "ファイルを閉じる", "Control+n",                &Mainform::mQTM_Close_Action},
    {"UntitledSeparator0",   "-"},
    {"mMarkKey",             "現在位置をマーク", "Cmd+Option+.",             &Mainform::mQTM_Mark_Action},
    {"mMarkSeekKey",         "マーク位置に移動", "Cmd+Option+/",             &Mainform::mQTM_MarkSeek_Action},
    {"UntitledSeparator4",   "-"},
    {"mFrameFreeDownKey",    "指定時間戻す",     "Option+Control+left",      &Mainform::mQTM_FrameFreeDown_Action,   kRepeats},
    {"mFrameFreeUpKey",      "指定時間進める",   "Option+Control+right",     &Mainform::mQTM_FrameFreeUp_Action,     kRepeats},
    {"mFrame30DownKey",      "30秒戻す",         "Cmd+Control+left",         &Mainform::mQTM_Frame30Down_Action,     kRepeats},
    {"mFrame30UpKey",        "30秒進める",       "Cmd+Control+right",        &Mainform::mQTM_Frame30Up_Action,       kRepeats},
    {"mFrame5DownKey",       "5秒戻す",          "Cmd+Option+Control+left",  &Mainform::mQTM_Frame5Down_Action,      kRepeats},
    {"mFrame5UpKey",         "5秒進める",        "Cmd+Option+Control+right", &Mainform::mQTM_Frame5Up_Action,        kRepeats},
    {"UntitledSeparator5",   "-"},
    {"mLoopKey",             "単一ループ設定",   "Control+z",                &Mainform::mLoopPlay_Action},
    {"mListLoopKey",         "リストループ設定", "Control+x",                &Mainform::mListLoopPlay_Action},
    {"UntitledSeparator6",   "-"},
    {"mSpeedUp",             "スピードを上げる", "Shift+Option+right",       &Mainform::mSpeedUp_Action,             kRepeats, Where::Console},
    {"mSpeedDown",           "スピードを下げる", "Shift+Option+left",        &Mainform::mSpeedDown_Action,           kRepeats, Where::Console},
    {"UntitledSeparator8",   "-"},
    {"mVolumeUpKey",         "ボリューム　＋",   "Control+up",               &Mainform::mVolumeUp_Action,            kRepeats},
    {"mVolumeDownKey",       "ボリューム　−",    "Control+down",             &Mainform::mVolumeDown_Action,          kRepeats},
    {"mMuteKey",             "ミュート",         "Option+Control+down",      &Mainform::mMute_Func},
};

inline constexpr MenuRow kWindowRows[] = {
    {"AltX_Key",             "コンソールウィンドウを隠す", "Option+x", &Mainform::AltX_Action},
};

inline constexpr std::array<MenuTable, 3> kMenus = {{
    {"ControllerMenu",  "コントローラー",   kControllerRows},
    {"Controller2Menu", "コントローラー２", kController2Rows},
    {"WindowMenu",      "ウィンドウ",       kWindowRows},
}};
// clang-format on

constexpr bool IsCommand(const MenuRow& row) {
    return row.text != "-";
}

/// Calls visit for each row that is bound in that window, in the menus' order.
template <class Visit> constexpr void ForEachCommand(Where window, const Visit& visit) {
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows)
            if (IsCommand(row) && (row.where == Where::Both || row.where == window))
                visit(row);
}

/// The row of that name, null if there is none.
constexpr const MenuRow* FindInMenu(std::string_view name) {
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows)
            if (row.name == name)
                return &row;
    return nullptr;
}

/// What AltX_Key reads while the console is hidden, and else.
inline constexpr std::string_view kShowConsoleText = "コンソールウィンドウを表示する";
inline constexpr std::string_view kHideConsoleText = FindInMenu("AltX_Key")->text;

/// True if no item has the name of another, no key stands twice but "return", and all commands but the quit
/// item have something to run.
constexpr bool MenuRowsAreWellFormed() {
    for (const MenuTable& a : kMenus)
        for (const MenuRow& row : a.rows) {
            int names = 0;
            int keys = 0;
            for (const MenuTable& b : kMenus)
                for (const MenuRow& other : b.rows) {
                    names += other.name == row.name ? 1 : 0;
                    keys += !row.shortcut.empty() && other.shortcut == row.shortcut ? 1 : 0;
                }
            if (names != 1 || (keys > 1 && row.shortcut != "return"))
                return false;
            if (row.command.there != (IsCommand(row) && row.role != MenuRole::Quit))
                return false;
        }
    return true;
}

static_assert(MenuRowsAreWellFormed());

} // namespace kirolane
