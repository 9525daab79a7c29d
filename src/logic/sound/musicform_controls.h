#pragma once

#include "logic/shell/design_rows.h"

namespace kirolane {

inline constexpr WindowDesign kMusicFormDesign = {
    .title = "Untitled",
    .role = WindowRole::Palette,
    .frame = WindowFrame::Palette,
    .width = 140,
    .height = 265,
    .hasBackColor = false,
    .backColor = kWhite,
    .visible = true,
    .closeButton = true,
    .minimizeButton = false,
};

namespace design {

// clang-format off
inline constexpr ControlDesign kMusicFormControls[] = {
    //         name                       parent       page left top width height
    Group    ("GroupBox1",               kWindow,     0, {   0,   0,  139,  265}, "コントローラー２"),
    [] {
        ControlDesign row =
    Label    ("FileLabel",               "GroupBox1", 0, {  10,  20,  120,   25}, "", kLeft);
        row.multiline = true;
        return row;
    }(),
    Label    ("PlayModeLabel",           "GroupBox1", 0, {  10,  49,   40,   20}, "", kCentre),
    Label    ("MediaType",               "GroupBox1", 0, {  55,  49,   30,   20}, "", kCentre),
    Bar      ("VolumeProgress",          "GroupBox1", 0, { 102,  52,   21,   36}, 100, 80),
    Label    ("VolumeLabel",             "GroupBox1", 0, {  10,  72,   75,   20}, "Volume： 80", kCentre),
    SliderRow("QTM_PosBar",              "GroupBox1", 0, {  10, 108,  120,   16}, 1, 0, 20, false, false),
    Quiet(
    Label    ("PosTime",                 "GroupBox1", 0, {  10, 129,   50,   20}, "00：00：00", kCentre)),
    Label    ("StaticText1",             "GroupBox1", 0, {  67, 129,    8,   20}, "/", kLeft),
    Label    ("MaxTime",                 "GroupBox1", 0, {  80, 129,   50,   20}, "00：00：00", kCentre),
    Bevel    ("QTM_PlayButton",          "GroupBox1", 0, {  46, 154,   50,   50}, "＞", 6, 9, false),
    Bevel    ("QTM_FrameFreeDownButton", "GroupBox1", 0, {  20, 178,   23,   22}, "<<", 5, 6, false),
    Bevel    ("QTM_FrameFreeUpButton",   "GroupBox1", 0, {  97, 178,   23,   22}, ">>", 5, 6, false),
    InFont("System", 8,
    Label    ("RateText",                "GroupBox1", 0, {  48, 211,   45,   20}, "Rate：±０", kLeft)),
    SliderRow("Rate",                    "GroupBox1", 0, {  20, 234,  100,   16}, 10, 5, 7, true, true),
    // Below the window's edge: never seen, whatever its Visible says.
    Player   ("QTM",                     kWindow,     0, {  10, 286,  100,  100}, true),
};
// clang-format on

static_assert(IsWellFormed(kMusicFormControls));

} // namespace design
} // namespace kirolane
