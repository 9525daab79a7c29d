#include "backends/qt/screens.h"

#include "backends/qt/convert.h"
#include "backends/qt/formwindow.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace kirolane::qt {

namespace {

// Frames are the window manager's and known only once a window is up; these leave room for the usual ones.
constexpr int kTitleBar = 36;
constexpr int kEdge = 6;

/// The main display without panels. What the window manager says of them counts for the desktop as a whole,
/// so it may cut off a little much: more than half is not believed.
QRect WorkArea() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (primary == nullptr)
        return {};
    const QRect whole = primary->geometry();
    const QRect area = primary->availableGeometry();
    return area.width() > whole.width() / 2 && area.height() > whole.height() / 2 ? area : whole;
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
