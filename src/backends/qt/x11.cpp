#include "backends/qt/x11.h"

#ifdef KIROLANE_X11

#include <QGuiApplication>

#include <X11/Xatom.h>
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

QRect X11WorkArea() {
    Display* display = GetDisplay();
    if (display == nullptr)
        return {};
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    const Atom property = XInternAtom(display, "_NET_WORKAREA", True);
    if (property == 0 || XGetWindowProperty(display, DefaultRootWindow(display), property, 0, 4, False,
                                            XA_CARDINAL, &type, &format, &count, &left, &data) != Success)
        return {};
    QRect area;
    if (type == XA_CARDINAL && format == 32 && count == 4) { // format 32 comes as long
        const auto* values = reinterpret_cast<const long*>(data);
        area = QRect(static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
                     static_cast<int>(values[3]));
    }
    if (data != nullptr)
        XFree(data);
    return area;
}

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

QRect X11WorkArea() {
    return {};
}

void X11ShowOnAllDesktops(unsigned long /*window*/) {}

void X11SuspendScreenSaver(bool /*suspend*/) {}

} // namespace kirolane::qt

#endif
