#pragma once

#include <string>

/// What Qt does not ask of an X11 server. Elsewhere, and in a build without the X11 libraries, all of it is
/// without effect.
namespace kirolane::qt {

/// Asks the window manager to keep a window that is up on every virtual desktop.
void X11ShowOnAllDesktops(unsigned long window);

/// The name of the display that Qt is connected to, empty where it is no X11 server's.
std::string X11DisplayName();

/// Has the server leave screen saver and power saving alone. The server takes it back when the program ends.
void X11SuspendScreenSaver(bool suspend);

} // namespace kirolane::qt
