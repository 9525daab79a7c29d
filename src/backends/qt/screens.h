#pragma once

#include "contract/geometry.h"
#include "contract/window_design.h"

#include <QString>

#include <vector>

class QScreen;

/// Displays. A QScreen may be gone at the next event: callers use what they get at once and keep its name.
namespace kirolane::qt {

/// The main one first, the others from left to right; displays that show the same come each for itself.
std::vector<Rect> ScreenRects();
/// Null if no display has that name.
QScreen* ScreenNamed(const QString& name);

/// Where the content area of the console starts: at the top left of the main display's work area, with room
/// for a title bar and the menu bar.
Point ConsolePlace();
/// Where the content area of a palette of that width starts: beside the console's, and on the main display.
Point PalettePlace(const Rect& consoleContent, int paletteWidth);
/// Where the audience's window starts until it is placed: under the console, which it must not cover, and on
/// the main display.
Point AudiencePlace(const Rect& consoleContent);

} // namespace kirolane::qt
