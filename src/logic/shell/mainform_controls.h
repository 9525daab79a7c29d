#pragma once

#include "logic/shell/design_rows.h"

/// The console: its window's design values and its controls, in creation order.
namespace kirolane {

inline constexpr WindowDesign kMainformDesign = {
    .title = "Kirolane",
    .role = WindowRole::Console,
    .frame = WindowFrame::Metal,
    .width = 800,
    .height = 420,
    .hasBackColor = false,
    .backColor = kWhite,
    .visible = true,
    .closeButton = true,
    .minimizeButton = true,
};

namespace design {

constexpr ControlDesign FolderButton(std::string_view name, std::int32_t page, std::int32_t left,
                                     std::string_view caption, std::string_view shortcut) {
    ControlDesign row = Bevel(name, "ListTab", page, {left, 383, 24, 22}, caption, 0, 9, true);
    row.holds = true;
    row.shortcut = shortcut;
    return row;
}

// clang-format off
inline constexpr ControlDesign kMainformControls[] = {
    //         name                       parent       page left  top  width height
    Group    ("GroupBox1",               kWindow,     0, {   4,    5,  335,  300}, "コンソール"),
    Player   ("QTM",                     "GroupBox1", 0, {  11,   28,  320,  240}, true),
    SliderRow("QTM_PosBar",              "GroupBox1", 0, {  10,  276,  320,   16}, 1, 0, 20, false, false),
    Group    ("GroupBox2",               kWindow,     0, {   4,  310,  335,  105}, "コントローラー"),
    Quiet(
    Label    ("MonitorPosTime",          "GroupBox2", 0, {  14,  330,   50,   20}, "00：00：00", kCentre)),
    Label    ("StaticText4",             "GroupBox2", 0, {  71,  330,    8,   20}, "/", kLeft),
    Label    ("MaxTime",                 "GroupBox2", 0, {  84,  330,   50,   20}, "00：00：00", kCentre),
    Label    ("PlayModeLabel",           "GroupBox2", 0, { 134,  330,   50,   20}, "", kCentre),
    Label    ("MediaType",               "GroupBox2", 0, { 179,  330,   40,   20}, "", kCentre),
    Label    ("MovieSize",               "GroupBox2", 0, { 218,  330,   55,   20}, "", kCentre),
    Label    ("VolumeLabel",             "GroupBox2", 0, { 273,  330,   65,   20}, "Volume： 80", kCentre),
    Bevel    ("QTM_PlayButton",          "GroupBox2", 0, {  50,  355,   50,   50}, "＞", 6, 9, false),
    Bevel    ("QTM_FrameFreeDownButton", "GroupBox2", 0, {  24,  379,   23,   22}, "<<", 5, 6, false),
    Bevel    ("QTM_FrameFreeUpButton",   "GroupBox2", 0, { 101,  379,   23,   22}, ">>", 5, 6, false),
    Label    ("RateText",                "GroupBox2", 0, { 225,  355,   55,   20}, "Rate：±０", kLeft),
    SliderRow("Rate",                    "GroupBox2", 0, { 197,  379,  100,   16}, 10, 5, 7, true, true),
    Bar      ("VolumeProgress",          "GroupBox2", 0, { 309,  360,   21,   36}, 100, 80),
    Tabs     ("ListTab",                 kWindow,     0, { 347,    2,  450,  413}, "ムービー\nサウンド"),
    List     ("StrGrid",                 "ListTab",   1, { 356,   40,  433,  318}, "18,348,50"),
    List     ("mStrGrid",                "ListTab",   2, { 356,   40,  433,  318}, "18,348,50"),
    Label    ("DD",                      "ListTab",   1, { 356,  365,   40,   20}, "フォルダ：", kLeft),
    Label    ("mDD",                     "ListTab",   2, { 356,  365,   40,   20}, "フォルダ：", kLeft),
    Label    ("DirLabel",                "ListTab",   1, { 401,  365,  385,   20}, "", kLeft),
    Label    ("mDirLabel",               "ListTab",   2, { 401,  365,  385,   20}, "", kLeft),
    Label    ("LoopLabel",               "ListTab",   1, { 765,  362,   20,   20}, "", kCentre),
    Label    ("mLoopLabel",              "ListTab",   2, { 765,  362,   20,   20}, "", kCentre),
    Hidden(Coloured(kRed,
    Label    ("CountLabel",              "ListTab",   1, { 621,  384,   43,   20}, "カウント中：", kLeft))),
    Hidden(Coloured(kRed,
    Label    ("mCountLabel",             "ListTab",   2, { 621,  384,   43,   20}, "カウント中：", kLeft))),
    Quiet(
    Label    ("FileNumberLabel",         "ListTab",   1, { 666,  384,  120,   20}, "0", kRight)),
    Quiet(
    Label    ("mFileNumberLabel",        "ListTab",   2, { 666,  384,  120,   20}, "0", kRight)),

    // The step from the first folder button to the second is 22, all the others are 23.
    FolderButton("Fold1",  1, 356, "1", "Option+1"),    FolderButton("mFold1",  2, 356, "1", "Option+1"),
    FolderButton("Fold2",  1, 378, "2", "Option+2"),    FolderButton("mFold2",  2, 378, "2", "Option+2"),
    FolderButton("Fold3",  1, 401, "3", "Option+3"),    FolderButton("mFold3",  2, 401, "3", "Option+3"),
    FolderButton("Fold4",  1, 424, "4", "Option+4"),    FolderButton("mFold4",  2, 424, "4", "Option+4"),
    FolderButton("Fold5",  1, 447, "5", "Option+5"),    FolderButton("mFold5",  2, 447, "5", "Option+5"),
    FolderButton("Fold6",  1, 470, "6", "Option+6"),    FolderButton("mFold6",  2, 470, "6", "Option+6"),
    FolderButton("Fold7",  1, 493, "7", "Option+7"),    FolderButton("mFold7",  2, 493, "7", "Option+7"),
    FolderButton("Fold8",  1, 516, "8", "Option+8"),    FolderButton("mFold8",  2, 516, "8", "Option+8"),
    FolderButton("Fold9",  1, 539, "9", "Option+9"),    FolderButton("mFold9",  2, 539, "9", "Option+9"),
    FolderButton("Fold10", 1, 562, "10", "Option+0"),   FolderButton("mFold10", 2, 562, "10", "Option+0"),
    FolderButton("Fold99", 1, 585, "?", "Cmd+o"),       FolderButton("mFold99", 2, 585, "?", "Cmd+o"),

    // The curtain is made below the window's edge; Event_Open moves it over the player.
    Row(ControlKind::Rectangle,
              "DummyBack",               kWindow,     0, {   0,  453,  320,  240}),
    Picture  ("DummyQTM",                "DummyBack", 0, {  76,  511,  160,  120}, "Kirologo"),
    Label    ("FileLabel",               kWindow,     0, { 115,  306,  224,   20}, "", kLeft),
    Quiet(
    Label    ("PosTIme",                 kWindow,     0, {  90,    2,   50,   20}, "00：00：00", kLeft)), // sic
    Quiet(Coloured(kGrey,
    Label    ("TimingLabel",             kWindow,     0, { 181,    2,  150,   20}, "±0秒： Timing", kRight))),
    Clock    ("TimeTimer", 1000, 2),
    Worker   ("FolderThread"),
    Worker   ("mFolderThread"),
};
// clang-format on

static_assert(IsWellFormed(kMainformControls));

} // namespace design
} // namespace kirolane
