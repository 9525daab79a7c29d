#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/reporting.h"
#include "contract/rectangle.h"

#include <QPainter>
#include <QWidget>

namespace kirolane::qt {

namespace {

class FillWidget : public QWidget {
public:
    FillWidget(QColor color, QWidget* parent) : QWidget(parent), m_color(color) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), m_color); }

private:
    QColor m_color;
};

class RectanglePeer final : public ControlPeer {
public:
    RectanglePeer(Rectangle& rectangle, QWidget& content) : ControlPeer(rectangle) {
        auto* widget = new Reporting<FillWidget>(GetLink(), ToQt(rectangle.FillColor()), &content);
        SetSpokenRole(*widget, QAccessible::Graphic);
        Adopt(*widget);
    }

private:
    void UpdateOwn() override {}
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(Rectangle& rectangle, QWidget& content) {
    return std::make_unique<RectanglePeer>(rectangle, content);
}

} // namespace kirolane::qt
