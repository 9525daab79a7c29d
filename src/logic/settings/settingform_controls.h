#pragma once

#include "logic/shell/design_rows.h"

namespace kirolane {

inline constexpr WindowDesign kSettingFormDesign = {
    .title = "環境設定",
    .role = WindowRole::Dialog,
    .frame = WindowFrame::FloatingTool,
    .width = 688,
    .height = 400,
    .hasBackColor = true,
    .backColor = kFlat,
    .visible = true,
    .closeButton = true,
    .minimizeButton = false,
};

namespace design {

/// A check box, disabled until the form is filled for the first time.
constexpr ControlDesign Check(std::string_view name, std::string_view parent, Rect rect,
                              std::string_view caption, bool on) {
    ControlDesign row = Row(ControlKind::CheckBox, name, parent, 0, rect, caption);
    row.textSize = 0;
    row.value = on ? 1 : 0;
    row.enabled = false;
    return row;
}

/// A field that only buttons change.
constexpr ControlDesign Edit(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                             std::string_view text, TextAlign align) {
    ControlDesign row = Row(ControlKind::EditField, name, parent, page, rect, text);
    row.textSize = 0;
    row.textAlign = align;
    row.enabled = false;
    return row;
}

constexpr ControlDesign Button(std::string_view name, std::string_view parent, std::int32_t page, Rect rect,
                               std::string_view caption) {
    return InFont("System", 0, Bevel(name, parent, page, rect, caption, 0, 0, true));
}

constexpr std::int32_t FolderTop(std::int32_t number) {
    return 148 + 22 * (number - 1);
}
constexpr ControlDesign FolderBevel(std::string_view name, std::string_view parent, std::int32_t number,
                                    std::string_view caption) {
    return Button(name, parent, 0, {225, FolderTop(number), 60, 22}, caption);
}
constexpr ControlDesign FolderEdit(std::string_view name, std::string_view parent, std::int32_t number) {
    return Edit(name, parent, 0, {300, FolderTop(number), 350, 22}, "", kLeft);
}

constexpr ControlDesign MessageLabelRow() {
    ControlDesign row = Label("MessageLabel", kWindow, 0, {47, 336, 95, 20}, "", kCentre);
    row.textSize = 10;
    row.bold = true;
    row.textColor = kRed;
    return row;
}

// clang-format off
inline constexpr ControlDesign kSettingFormControls[] = {
    //     name                  parent       page left  top width height
    Group ("GroupBox9",          kWindow,     0, {  10,  10,  175,  212}, "起動時に表示"),
    Group ("GroupBox4",          "GroupBox9", 0, {  22,  31,  150,  110}, "モニターウィンドウ"),
    Check ("DisplayMode_Check",  "GroupBox4",    {  32,  59,  130,   20}, "デュアルディスプレイモード", true),
    Check ("FullScreen_Check",   "GroupBox4",    {  47,  84,  115,   20}, "フルスクリーン", false),
    Check ("Hide_Check",         "GroupBox4",    {  61, 109,  101,   20}, "非表示", false),
    Group ("GroupBox8",          "GroupBox9", 0, {  22, 150,  150,   60}, "コンソールウィンドウ"),
    Check ("WindowColor_Check",  "GroupBox8",    {  32, 178,  100,   20}, "フラット", false),
    Button("SettingButton",      kWindow,     0, {  67, 289,   60,   22}, "設定変更"),
    MessageLabelRow(),
    Tabs  ("ListTab",            kWindow,     0, { 197,   7,  480,  385}, "ムービー\nサウンド"),

    Group ("GroupBox2",          "ListTab",   1, { 207,  52,  100,   60}, "指定時間"),
    Row(ControlKind::PopupMenu,
           "FreeSeek_Popup",     "GroupBox2", 0, { 222,  81,   70,   20}),
    Group ("GroupBox1",          "ListTab",   1, { 317,  52,  100,   60}, "フォルダ番号"),
    Edit  ("FolderNumber_Edit",  "GroupBox1", 0, { 347,  78,   26,   22}, "1", kCentre),
    Row(ControlKind::UpDownArrows,
           "UpDownArrow",        "GroupBox1", 0, { 377,  78,   13,   23}),
    Group ("GroupBox3",          "ListTab",   1, { 207, 122,  460,  258}, "フォルダ"),
    FolderBevel("Folder1_Bevel",   "GroupBox3",  1, "1 - 変更"),  FolderEdit("Folder1_Edit",   "GroupBox3",  1),
    FolderBevel("Folder2_Bevel",   "GroupBox3",  2, "2 - 変更"),  FolderEdit("Folder2_Edit",   "GroupBox3",  2),
    FolderBevel("Folder3_Bevel",   "GroupBox3",  3, "3 - 変更"),  FolderEdit("Folder3_Edit",   "GroupBox3",  3),
    FolderBevel("Folder4_Bevel",   "GroupBox3",  4, "4 - 変更"),  FolderEdit("Folder4_Edit",   "GroupBox3",  4),
    FolderBevel("Folder5_Bevel",   "GroupBox3",  5, "5 - 変更"),  FolderEdit("Folder5_Edit",   "GroupBox3",  5),
    FolderBevel("Folder6_Bevel",   "GroupBox3",  6, "6 - 変更"),  FolderEdit("Folder6_Edit",   "GroupBox3",  6),
    FolderBevel("Folder7_Bevel",   "GroupBox3",  7, "7 - 変更"),  FolderEdit("Folder7_Edit",   "GroupBox3",  7),
    FolderBevel("Folder8_Bevel",   "GroupBox3",  8, "8 - 変更"),  FolderEdit("Folder8_Edit",   "GroupBox3",  8),
    FolderBevel("Folder9_Bevel",   "GroupBox3",  9, "9 - 変更"),  FolderEdit("Folder9_Edit",   "GroupBox3",  9),
    FolderBevel("Folder10_Bevel",  "GroupBox3", 10, "10 - 変更"), FolderEdit("Folder10_Edit",  "GroupBox3", 10),

    Group ("GroupBox6",          "ListTab",   2, { 207,  52,  100,   60}, "指定時間"),
    Row(ControlKind::PopupMenu,
           "mFreeSeek_Popup",    "GroupBox6", 0, { 222,  81,   70,   20}),
    Group ("GroupBox5",          "ListTab",   2, { 317,  52,  100,   60}, "フォルダ番号"),
    Edit  ("mFolderNumber_Edit", "GroupBox5", 0, { 347,  78,   26,   22}, "1", kCentre),
    Row(ControlKind::UpDownArrows,
           "mUpDownArrow",       "GroupBox5", 0, { 377,  78,   13,   23}),
    Group ("GroupBox7",          "ListTab",   2, { 207, 122,  460,  258}, "フォルダ"),
    FolderBevel("mFolder1_Bevel",  "GroupBox7",  1, "1 - 変更"),  FolderEdit("mFolder1_Edit",  "GroupBox7",  1),
    FolderBevel("mFolder2_Bevel",  "GroupBox7",  2, "2 - 変更"),  FolderEdit("mFolder2_Edit",  "GroupBox7",  2),
    FolderBevel("mFolder3_Bevel",  "GroupBox7",  3, "3 - 変更"),  FolderEdit("mFolder3_Edit",  "GroupBox7",  3),
    FolderBevel("mFolder4_Bevel",  "GroupBox7",  4, "4 - 変更"),  FolderEdit("mFolder4_Edit",  "GroupBox7",  4),
    FolderBevel("mFolder5_Bevel",  "GroupBox7",  5, "5 - 変更"),  FolderEdit("mFolder5_Edit",  "GroupBox7",  5),
    FolderBevel("mFolder6_Bevel",  "GroupBox7",  6, "6 - 変更"),  FolderEdit("mFolder6_Edit",  "GroupBox7",  6),
    FolderBevel("mFolder7_Bevel",  "GroupBox7",  7, "7 - 変更"),  FolderEdit("mFolder7_Edit",  "GroupBox7",  7),
    FolderBevel("mFolder8_Bevel",  "GroupBox7",  8, "8 - 変更"),  FolderEdit("mFolder8_Edit",  "GroupBox7",  8),
    FolderBevel("mFolder9_Bevel",  "GroupBox7",  9, "9 - 変更"),  FolderEdit("mFolder9_Edit",  "GroupBox7",  9),
    FolderBevel("mFolder10_Bevel", "GroupBox7", 10, "10 - 変更"), FolderEdit("mFolder10_Edit", "GroupBox7", 10),
};
// clang-format on

static_assert(IsWellFormed(kSettingFormControls));

} // namespace design
} // namespace kirolane
