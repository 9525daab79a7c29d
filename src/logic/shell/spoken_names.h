#pragma once

#include <string_view>

/// What a screen reader calls the controls that have no text of their own, or one that is a sign. What the
/// movie and the sound both have is named once: a leading "m" does not count, unless a row has it.
namespace kirolane::design {

struct SpokenName {
    std::string_view control;
    std::string_view spoken;
};

// clang-format off
inline constexpr SpokenName kSpokenNames[] = {
    {"QTM",                     "映像"},
    {"QTM_PosBar",              "再生位置"},
    {"QTM_PlayButton",          "一時停止・再生"},
    {"QTM_FrameFreeDownButton", "指定時間戻す"},
    {"QTM_FrameFreeUpButton",   "指定時間進める"},
    {"Rate",                    "スピード"},
    {"VolumeProgress",          "ボリューム"},
    {"ListTab",                 "ページ"},
    {"StrGrid",                 "ムービーのリスト"},
    {"mStrGrid",                "サウンドのリスト"},
    {"Fold1",  "フォルダ 1"}, {"Fold2", "フォルダ 2"}, {"Fold3", "フォルダ 3"}, {"Fold4", "フォルダ 4"},
    {"Fold5",  "フォルダ 5"}, {"Fold6", "フォルダ 6"}, {"Fold7", "フォルダ 7"}, {"Fold8", "フォルダ 8"},
    {"Fold9",  "フォルダ 9"}, {"Fold10", "フォルダ 10"}, {"Fold99", "フォルダを選択"},
    {"DummyBack",               "幕"},
    {"DummyQTM",                "ロゴ"},
    {"Canvas1",                 "ロゴ"},
    {"FreeSeek_Popup",          "指定時間"},
    {"FolderNumber_Edit",       "フォルダ番号"},
    {"UpDownArrow",             "フォルダ番号"},
    {"Folder1_Edit", "フォルダ 1"}, {"Folder2_Edit", "フォルダ 2"}, {"Folder3_Edit", "フォルダ 3"},
    {"Folder4_Edit", "フォルダ 4"}, {"Folder5_Edit", "フォルダ 5"}, {"Folder6_Edit", "フォルダ 6"},
    {"Folder7_Edit", "フォルダ 7"}, {"Folder8_Edit", "フォルダ 8"}, {"Folder9_Edit", "フォルダ 9"},
    {"Folder10_Edit", "フォルダ 10"},
};
// clang-format on

/// "" for a control that is called by its text.
constexpr std::string_view SpokenNameOf(std::string_view control) {
    std::string_view found;
    for (const SpokenName& row : kSpokenNames) {
        if (row.control == control)
            return row.spoken;
        if (control.starts_with('m') && row.control == control.substr(1))
            found = row.spoken;
    }
    return found;
}

} // namespace kirolane::design
