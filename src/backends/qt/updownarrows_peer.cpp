#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/look.h"
#include "contract/updownarrows.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

namespace kirolane::qt {

namespace {

/// One half of the pair.
class ArrowWidget : public QAbstractButton {
public:
    ArrowWidget(bool up, QWidget* parent) : QAbstractButton(parent), m_up(up) {
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const int ground = isDown() ? 0xC0 : underMouse() ? 0xFF : 0xF2;
        painter.setPen(QColor(0x8C, 0x8C, 0x8C));
        painter.setBrush(QColor(ground, ground, ground));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);

        const QPointF middle = QRectF(rect()).center();
        const qreal tip = m_up ? -2.0 : 2.0;
        QPainterPath arrow;
        arrow.moveTo(middle + QPointF(0, tip));
        arrow.lineTo(middle + QPointF(3, -tip));
        arrow.lineTo(middle + QPointF(-3, -tip));
        arrow.closeSubpath();
        painter.fillPath(arrow, palette().color(QPalette::ButtonText));
        DrawFocus(*this, painter);
    }

private:
    bool m_up;
};

class UpDownArrowsPeer final : public ControlPeer {
public:
    UpDownArrowsPeer(UpDownArrows& arrows, QWidget& content) : ControlPeer(arrows) {
        auto* pair = new QWidget(&content);
        m_up = AddHalf(*pair, true, &UpDownArrows::ReportUp);
        m_down = AddHalf(*pair, false, &UpDownArrows::ReportDown);
        SetSpokenRole(*pair, QAccessible::Grouping);
        Adopt(*pair);
    }

private:
    QAbstractButton* AddHalf(QWidget& pair, bool up, void (UpDownArrows::*report)()) {
        auto* half = new ArrowWidget(up, &pair);
        const QString name =
            ToText(Control().Name()) + (up ? QStringLiteral(".Up") : QStringLiteral(".Down"));
        half->setObjectName(name);
        half->setAccessibleName(ToText(Control().Design().spoken) +
                                (up ? QStringLiteral(" ＋") : QStringLiteral(" −")));
        Describe(*half, name);
        QObject::connect(half, &QAbstractButton::clicked, half, [link = GetLink(), report] {
            if (auto* arrows = link.As<UpDownArrows>())
                (arrows->*report)();
        });
        return half;
    }

    void UpdateOwn() override {
        const int upper = Control().Height() / 2;
        m_up->setGeometry(0, 0, Control().Width(), upper);
        m_down->setGeometry(0, upper, Control().Width(), Control().Height() - upper);
    }

    QAbstractButton* m_up;
    QAbstractButton* m_down;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(UpDownArrows& arrows, QWidget& content) {
    return std::make_unique<UpDownArrowsPeer>(arrows, content);
}

} // namespace kirolane::qt
