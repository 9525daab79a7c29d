#include "backends/qt/screens.h"

#include "backends/qt/convert.h"
#include "backends/qt/formwindow.h"
#include "backends/qt/x11.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace kirolane::qt {

namespace {

// Frames are the window manager's and known only once a window is up; these leave room for the usual ones.
constexpr int kTitleBar = 36;
constexpr int kEdge = 6;

/// The main display without panels. With several displays Qt leaves the panels in; what the window manager
/// says counts for the desktop as a whole, so it may cut off a little much, but never too little.
QRect WorkArea() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (primary == nullptr)
        return {};
    const QRect area = primary->availableGeometry();
    const QRect desktop = X11WorkArea();
    // Where a display begins is told in device pixels, what lies on it in its own units.
    const QPoint begin = primary->geometry().topLeft();
    const double ratio = primary->devicePixelRatio();
    const auto onDisplay = [&](QPoint point) { return begin + (point - begin) / ratio; };
    const QRect common =
        area & QRect(onDisplay(desktop.topLeft()),
                     onDisplay(desktop.topLeft() + QPoint(desktop.width(), desktop.height())) - QPoint(1, 1));
    return common.width() > area.width() / 2 && common.height() > area.height() / 2 ? common : area;
}

} // namespace

std::vector<Rect> ScreenRects() {
    std::vector<Rect> rects;
    const QScreen* primary = QGuiApplication::primaryScreen();
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen != primary)
            rects.push_back(FromQt(screen->geometry()));
    std::sort(rects.begin(), rects.end(), [](const Rect& a, const Rect& b) {
        return a.left != b.left ? a.left < b.left : a.top < b.top;
    });
    // For a moment, when the last display goes, there may be none; the record has always had one.
    const Rect main = primary == nullptr ? Rect{0, 0, 1024, 768} : FromQt(primary->geometry());
    rects.insert(rects.begin(), main);
    return rects;
}

QScreen* ScreenNamed(const QString& name) {
    const auto screens = QGuiApplication::screens();
    const auto it = std::find_if(screens.begin(), screens.end(),
                                 [&](const QScreen* screen) { return screen->name() == name; });
    return it == screens.end() ? nullptr : *it;
}

QScreen* ScreenHolding(QPoint point) {
    const auto screens = QGuiApplication::screens();
    const auto it = std::find_if(screens.begin(), screens.end(),
                                 [&](const QScreen* screen) { return screen->geometry().contains(point); });
    return it == screens.end() ? nullptr : *it;
}

Point ConsolePlace() {
    const QRect area = WorkArea();
    return {area.x() + kEdge, area.y() + kTitleBar + MenuBarHeight()};
}

Point PalettePlace(const Rect& consoleContent, int paletteWidth) {
    const QRect area = WorkArea();
    const int beside = consoleContent.left + consoleContent.width + 3 * kEdge;
    const int last = area.x() + area.width() - paletteWidth - kEdge;
    return {std::max(std::min(beside, last), area.x()), consoleContent.top - MenuBarHeight()};
}

Point AudiencePlace(const Rect& consoleContent) {
    const Point below{consoleContent.left, consoleContent.top + consoleContent.height + kEdge};
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary != nullptr && primary->geometry().contains(below.left, below.top) ? below : ConsolePlace();
}

} // namespace kirolane::qt
