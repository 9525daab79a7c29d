#pragma once

#include "contract/color.h"
#include "contract/geometry.h"

#include <cstdint>
#include <string_view>

namespace kirolane {

enum class ControlKind : std::uint8_t {
    BevelButton,
    Canvas,
    CheckBox,
    EditField,
    GroupBox,
    Listbox,
    MoviePlayer,
    PopupMenu,
    ProgressBar,
    PushButton,
    Rectangle,
    Slider,
    StaticText,
    TabPanel,
    Thread,
    Timer,
    UpDownArrows,
};

enum class TextAlign : std::uint8_t { Left = 0, Centre = 1, Right = 2 };

/// One row of a form's control table: the state in which a control is made. Fields that a class does not know
/// have no effect. Rows stand in creation order, which is also the order from back to front.
struct ControlDesign {
    std::string_view name;
    ControlKind kind = ControlKind::StaticText;
    std::string_view parent = {}; ///< a GroupBox, TabPanel or Rectangle of the same form, "" for the window
    std::int32_t page = 0;        ///< one-based page of a TabPanel parent, 0 for none
    Rect rect = {};               ///< window coordinates, also inside a parent
    std::string_view text = {};   ///< caption or text; of a TabPanel its tabs, one a line
    /// What a screen reader calls it, "" for its text or else its name.
    std::string_view spoken = {};
    std::string_view textFont = "Osaka";
    std::int32_t textSize = 9; ///< pixels; 0 is the platform's own size
    bool bold = false;
    Color textColor = kBlack;
    TextAlign textAlign = TextAlign::Left;
    bool multiline = false;
    /// StaticText: changes by itself all the time. A screen reader that looks gets its text and is not told.
    bool quiet = false;
    bool visible = true;
    bool enabled = true;
    std::int32_t minimum = 0; ///< Slider, ProgressBar
    std::int32_t maximum = 0;
    std::int32_t value = 0; ///< Slider, ProgressBar, TabPanel (zero-based page), CheckBox (0, 1)
    std::int32_t lineStep = 1;
    std::int32_t pageStep = 20;
    bool liveScroll = true;
    std::int32_t bevel = 0;             ///< BevelButton: depth of its edge, 0 flat to 6
    bool holds = false;                 ///< BevelButton: may stay pressed
    std::string_view shortcut = {};     ///< BevelButton: its key while it can be seen, as of a menu item
    std::string_view columnWidths = {}; ///< Listbox: pixels, joined by commas, one a column
    std::string_view picture = {};      ///< Canvas: name of the picture shown, "" for none
    Color fillColor = kBlack;           ///< Rectangle
    bool border = false;                ///< MoviePlayer
    std::int32_t period = 1000;         ///< Timer: milliseconds
    std::int32_t mode = 0;              ///< Timer: 0 off, 2 repeating
};

} // namespace kirolane
