#pragma once

#include "contract/color.h"

#include <cstdint>
#include <string_view>

namespace kirolane {

/// What a window is for. All that the system does with one window and not with another goes by this.
enum class WindowRole : std::uint8_t {
    Console,  ///< the operator's main window; it has the menu bar, and the others find their place beside it
    Audience, ///< what the show is seen in
    Palette,  ///< stands beside the console and never takes the keyboard; its close box only hides it
    Dialog,   ///< comes when it is called for and goes again
};

/// How a window looks, by its design number.
enum class WindowFrame : std::uint8_t {
    Document = 0,     ///< title bar
    Plain = 4,        ///< neither title bar nor edge
    FloatingTool = 7, ///< small title bar, stays above the console
    Metal = 9,        ///< title bar
    Palette = 10,     ///< small title bar, stays above the console
};

/// The state in which a window is made.
struct WindowDesign {
    std::string_view title;
    WindowRole role = WindowRole::Dialog;
    WindowFrame frame = WindowFrame::Document;
    std::int32_t width = 0; ///< of the content area
    std::int32_t height = 0;
    bool hasBackColor = false;
    Color backColor = kWhite;
    bool visible = true;
    bool closeButton = true;
    bool minimizeButton = false;
};

} // namespace kirolane
