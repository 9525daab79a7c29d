#include "show.h"

#include "contract/exceptions.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QWidget>

namespace kirolane::bench {

namespace {

QWidget& WidgetOf(const char* window, const char* name) {
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == QLatin1String(name) &&
            widget->window()->objectName() == QLatin1String(window))
            return *widget;
    throw RuntimeException(std::string("there is no widget ") + name);
}

Area AreaOf(const QWidget& widget) {
    const QPoint place = widget.mapToGlobal(QPoint(0, 0));
    return {place.x(), place.y(), widget.width(), widget.height()};
}

/// Where the preview's picture is from the first open on, which gives the player its full height.
Area PreviewArea() {
    Area area = AreaOf(WidgetOf("Mainform", "QTM"));
    area.height = area.width * 3 / 4;
    return area;
}

Area StageArea() {
    return AreaOf(*WidgetOf("MonitorForm", "QTM").window());
}

} // namespace

Show::Show(const std::string& movieFolder, Look look, const std::string& sound)
    : m_app(movieFolder, Displays::Desktop, sound) {
    m_app.UntilScanned();
    m_hands.PaintGround(kGround);
    m_app.Until([] {
        const QWidget* active = QApplication::activeWindow();
        return active != nullptr && active->objectName() == QLatin1String("Mainform");
    });
    m_app.Until([] { return StageArea().width == 1920 && StageArea().left == 1920; });
    const Area preview = look == Look::Stage ? Area() : PreviewArea();
    m_camera = std::make_unique<Camera>(StageArea(), preview, [this] { m_app.Wake(); });
    Until([](const Shot& shot) { return shot.stage.kind == Sight::Kind::Curtain; });
}

void Show::Until(const std::function<bool(const Shot&)>& wanted) const {
    m_app.Until([&] { return wanted(m_camera->Newest()); });
}

void Show::UntilSeen(int clip, int frame) const {
    Until([=](const Shot& shot) { return shot.stage.Shows(clip) && shot.stage.frame >= frame; });
}

void Show::DoubleClickRow(int row) {
    const auto& list = static_cast<const QAbstractItemView&>(WidgetOf("Mainform", "StrGrid"));
    const QPoint middle = list.visualRect(list.model()->index(row, 1)).center();
    const QPoint place = list.viewport()->mapToGlobal(middle);
    m_hands.DoubleClick(place.x(), place.y());
}

} // namespace kirolane::bench
