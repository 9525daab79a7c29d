#pragma once

#include "contract/color.h"

#include <cstdint>
#include <string_view>

namespace kirolane {

/// The window kinds in use, by their design number.
enum class WindowFrame : std::uint8_t {
    Document = 0,     ///< title bar, no close box here: the about window
    Plain = 4,        ///< neither title bar nor edge: the audience's window
    FloatingTool = 7, ///< stays above the console: the preferences
    Metal = 9,        ///< the console
    Palette = 10,     ///< stays above the console and never takes the keyboard: the sound window
};

/// The state in which a window is made.
struct WindowDesign {
    std::string_view title;
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
