#pragma once

#include "logic/shell/design_rows.h"

namespace kirolane {

inline constexpr WindowDesign kVerFormDesign = {
    .title = "バージョン情報",
    .role = WindowRole::Dialog,
    .frame = WindowFrame::Document,
    .width = 245,
    .height = 300,
    .hasBackColor = true,
    .backColor = kFlat,
    .visible = true,
    .closeButton = false,
    .minimizeButton = false,
};

namespace design {

inline constexpr std::string_view kRounded = "ヒラギノ丸ゴ Pro W4";

// clang-format off
inline constexpr ControlDesign kVerFormControls[] = {
    //                          name              parent   page left top width height
    Picture                   ("Canvas1",        kWindow, 0, {  43,   2,  160,  120}, "Kirologo"),
    InFont(kRounded, 30, Label("LotoLabel",      kWindow, 0, {   0, 125,  245,   45}, "Kirolane", kCentre)), // sic
    InFont(kRounded, 12, Label("VerLabel",       kWindow, 0, {   0, 159,  245,   20}, "Version " KIROLANE_VERSION, kCentre)),
    InFont(kRounded, 12, Label("CopyrightLabel", kWindow, 0, {   0, 184,  245,   20}, "© 2026 Kirolane contributors", kCentre)),
    Row(ControlKind::PushButton, "OKButton",     kWindow, 0, { 146, 268,   80,   20}, "OK"),
};
// clang-format on

static_assert(IsWellFormed(kVerFormControls));

} // namespace design
} // namespace kirolane
