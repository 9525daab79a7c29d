#include "backends/qt/x11.h"

#ifdef KIROLANE_X11

#include <QGuiApplication>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

namespace kirolane::qt {

namespace {

/// Null where the program does not run on X11.
Display* GetDisplay() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->display();
}

} // namespace

void X11ShowOnAllDesktops(unsigned long window) {
    Display* display = GetDisplay();
    if (display == nullptr)
        return;
    XEvent order{};
    order.xclient.type = ClientMessage;
    order.xclient.window = window;
    order.xclient.message_type = XInternAtom(display, "_NET_WM_DESKTOP", False);
    order.xclient.format = 32;
    order.xclient.data.l[0] = 0xFFFFFFFF; // all
    order.xclient.data.l[1] = 1;          // asked by an ordinary program
    XSendEvent(display, DefaultRootWindow(display), False, SubstructureRedirectMask | SubstructureNotifyMask,
               &order);
    XFlush(display);
}

std::string X11DisplayName() {
    Display* display = GetDisplay();
    return display == nullptr ? std::string() : DisplayString(display);
}

void X11SuspendScreenSaver(bool suspend) {
    Display* display = GetDisplay();
    int eventBase = 0;
    int errorBase = 0;
    if (display == nullptr || !XScreenSaverQueryExtension(display, &eventBase, &errorBase))
        return;
    XScreenSaverSuspend(display, suspend ? True : False);
    XFlush(display);
}

} // namespace kirolane::qt

#else

namespace kirolane::qt {

void X11ShowOnAllDesktops(unsigned long /*window*/) {}

std::string X11DisplayName() {
    return {};
}

void X11SuspendScreenSaver(bool /*suspend*/) {}

} // namespace kirolane::qt

#endif
