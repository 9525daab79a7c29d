#pragma once

#include "logic/shell/design_rows.h"

namespace kirolane {

inline constexpr WindowDesign kMonitorFormDesign = {
    .title = "モニター",
    .role = WindowRole::Audience,
    .frame = WindowFrame::Plain,
    .width = 320,
    .height = 240,
    .hasBackColor = true,
    .backColor = kBlack,
    .visible = true,
    .closeButton = false,
    .minimizeButton = false,
};

namespace design {

// clang-format off
inline constexpr ControlDesign kMonitorFormControls[] = {
    //       name        parent       page left top width height
    Player  ("QTM",       kWindow,     0, {   0,  0,  320,  240}, false),
    Row(ControlKind::Rectangle, // beside the window; its placement moves it
             "DummyBack", kWindow,     0, { 349,  0,  320,  241}),
    Picture ("DummyQTM",  "DummyBack", 0, { 431, 63,  157,  120}, "Kirologo"),
};
// clang-format on

static_assert(IsWellFormed(kMonitorFormControls));

} // namespace design
} // namespace kirolane
