#pragma once

#include "contract/menuitem.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

/// All menus and keys of the program. What an item does is told per window: logic/shell/keys.cpp for the
/// console, logic/display/monitorform.cpp for the monitor.
namespace kirolane {

/// A text of "-" is a separator. Modifiers and key are joined by "+".
struct MenuRow {
    std::string_view name;
    MenuRole role;
    std::string_view text;
    std::string_view shortcut;
    bool repeats = false; ///< while the key is held down
};

inline constexpr bool kRepeats = true;

struct MenuTable {
    std::string_view name;
    std::string_view text;
    std::span<const MenuRow> rows;
};

// clang-format off
inline constexpr MenuRow kControllerRows[] = {
    {"FileQuit",             MenuRole::Quit,        "&Quit",            "Cmd+Q"},
    {"Shortcut_Ver",         MenuRole::About,       "バージョン情報",   ""},
    {"Shortcut_Setting",     MenuRole::Preferences, "環境設定",         "Cmd+,"},
    {"OpenKey",              MenuRole::Plain,       "ファイルを開く",   "return"},
    {"PlayStatusChangeKey",  MenuRole::Plain,       "一時停止・再生",   "Space"},
    {"StopKey",              MenuRole::Plain,       "停止",             "Shift+b"},
    {"CloseKey",             MenuRole::Plain,       "ファイルを閉じる", "Shift+n"},
    {"UntitledSeparator3",   MenuRole::Plain,       "-",                ""},
    {"MarkKey",              MenuRole::Plain,       "現在位置をマーク", "Cmd+."},
    {"MarkSeekKey",          MenuRole::Plain,       "マーク位置に移動", "Cmd+/"},
    {"UntitledSeparator",    MenuRole::Plain,       "-",                ""},
    {"FrameFreeDownKey",     MenuRole::Plain,       "指定時間戻す",     "Option+left", kRepeats},
    {"FrameFreeUpKey",       MenuRole::Plain,       "指定時間進める",   "Option+right", kRepeats},
    {"Frame30DownKey",       MenuRole::Plain,       "30秒戻す",         "Cmd+left", kRepeats},
    {"Frame30UpKey",         MenuRole::Plain,       "30秒進める",       "Cmd+right", kRepeats},
    {"Frame5DownKey",        MenuRole::Plain,       "5秒戻す",          "Cmd+Option+left", kRepeats},
    {"Frame5UpKey",          MenuRole::Plain,       "5秒進める",        "Cmd+Option+right", kRepeats},
    {"UntitledSeparator1",   MenuRole::Plain,       "-",                ""},
    {"LoopKey",              MenuRole::Plain,       "単一ループ設定",   "Shift+z"},
    {"ListLoopKey",          MenuRole::Plain,       "リストループ設定", "Shift+x"},
    {"UntitledSeparator2",   MenuRole::Plain,       "-",                ""},
    {"SpeedUp",              MenuRole::Plain,       "スピードを上げる", "Shift+right", kRepeats},
    {"SpeedDown",            MenuRole::Plain,       "スピードを下げる", "Shift+left", kRepeats},
    {"UntitledSeparator7",   MenuRole::Plain,       "-",                ""},
    {"VolumeUpKey",          MenuRole::Plain,       "ボリューム　＋",   "Cmd+up", kRepeats},
    {"VolumeDownKey",        MenuRole::Plain,       "ボリューム　−",    "Cmd+down", kRepeats},
    {"MuteKey",              MenuRole::Plain,       "ミュート",         "Option+down"},
};

inline constexpr MenuRow kController2Rows[] = {
    {"mOpenKey",             MenuRole::Plain,       "ファイルを開く",   "return"},
    {"mPlayStatusChangeKey", MenuRole::Plain,       "一時停止・再生",   "Option+space"},
    {"mStopKey",             MenuRole::Plain,       "停止",             "Control+b"},
    {"mCloseKey",            MenuRole::Plain,       "ファイルを閉じる", "Control+n"},
    {"UntitledSeparator0",   MenuRole::Plain,       "-",                ""},
    {"mMarkKey",             MenuRole::Plain,       "現在位置をマーク", "Cmd+Option+."},
    {"mMarkSeekKey",         MenuRole::Plain,       "マーク位置に移動", "Cmd+Option+/"},
    {"UntitledSeparator4",   MenuRole::Plain,       "-",                ""},
    {"mFrameFreeDownKey",    MenuRole::Plain,       "指定時間戻す",     "Option+Control+left", kRepeats},
    {"mFrameFreeUpKey",      MenuRole::Plain,       "指定時間進める",   "Option+Control+right", kRepeats},
    {"mFrame30DownKey",      MenuRole::Plain,       "30秒戻す",         "Cmd+Control+left", kRepeats},
    {"mFrame30UpKey",        MenuRole::Plain,       "30秒進める",       "Cmd+Control+right", kRepeats},
    {"mFrame5DownKey",       MenuRole::Plain,       "5秒戻す",          "Cmd+Option+Control+left", kRepeats},
    {"mFrame5UpKey",         MenuRole::Plain,       "5秒進める",        "Cmd+Option+Control+right", kRepeats},
    {"UntitledSeparator5",   MenuRole::Plain,       "-",                ""},
    {"mLoopKey",             MenuRole::Plain,       "単一ループ設定",   "Control+z"},
    {"mListLoopKey",         MenuRole::Plain,       "リストループ設定", "Control+x"},
    {"UntitledSeparator6",   MenuRole::Plain,       "-",                ""},
    {"mSpeedUp",             MenuRole::Plain,       "スピードを上げる", "Shift+Option+right", kRepeats},
    {"mSpeedDown",           MenuRole::Plain,       "スピードを下げる", "Shift+Option+left", kRepeats},
    {"UntitledSeparator8",   MenuRole::Plain,       "-",                ""},
    {"mVolumeUpKey",         MenuRole::Plain,       "ボリューム　＋",   "Control+up", kRepeats},
    {"mVolumeDownKey",       MenuRole::Plain,       "ボリューム　−",    "Control+down", kRepeats},
    {"mMuteKey",             MenuRole::Plain,       "ミュート",         "Option+Control+down"},
};

inline constexpr MenuRow kWindowRows[] = {
    {"AltX_Key",             MenuRole::Plain,       "コンソールウィンドウを隠す", "Option+x"},
};

inline constexpr MenuTable kControllerMenu  = {"ControllerMenu",  "コントローラー",   kControllerRows};
inline constexpr MenuTable kController2Menu = {"Controller2Menu", "コントローラー２", kController2Rows};
inline constexpr MenuTable kWindowMenu      = {"WindowMenu",      "ウィンドウ",       kWindowRows};
// clang-format on

inline constexpr std::array<MenuTable, 3> kMenus = {kControllerMenu, kController2Menu, kWindowMenu};

/// What AltX_Key reads while the console is hidden.
inline constexpr std::string_view kShowConsoleText = "コンソールウィンドウを表示する";
inline constexpr std::string_view kHideConsoleText = kWindowRows[0].text;

/// True if there is an item of that name.
constexpr bool IsInMenu(std::string_view name) {
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows)
            if (row.name == name)
                return true;
    return false;
}

/// Commands: every row but the separators.
constexpr std::size_t CountMenuCommands() {
    std::size_t count = 0;
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows)
            count += row.text == "-" ? 0 : 1;
    return count;
}

/// True if no item has the name of another, and no key stands twice but "return".
constexpr bool MenuRowsAreUnique() {
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
        }
    return true;
}

static_assert(CountMenuCommands() == 42); // the 41 of the console and FileQuit
static_assert(MenuRowsAreUnique());

} // namespace kirolane
