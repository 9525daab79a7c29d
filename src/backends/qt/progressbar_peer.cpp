#include "backends/qt/controlpeers.h"
#include "backends/qt/reporting.h"
#include "contract/progressbar.h"

#include <QPainter>
#include <QProgressBar>

namespace kirolane::qt {

namespace {

/// A level in a frame, filled from the bottom where it is higher than wide, else from the left.
class LevelWidget : public QProgressBar {
public:
    explicit LevelWidget(QWidget* parent) : QProgressBar(parent) { setTextVisible(false); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
        painter.setPen(QColor(0x8C, 0x8C, 0x8C));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));

        const QRect inside = rect().adjusted(1, 1, -1, -1);
        const double share = maximum() > 0 ? static_cast<double>(value()) / maximum() : 0.0;
        QRect filled = inside;
        if (height() > width())
            filled.setTop(inside.bottom() + 1 - qRound(share * inside.height()));
        else
            filled.setWidth(qRound(share * inside.width()));
        if (filled.isEmpty())
            return;
        const QColor color = group == QPalette::Active
                                 ? palette().color(QPalette::Active, QPalette::Highlight)
                                 : QColor(0xC8, 0xC8, 0xC8);
        QLinearGradient ground(inside.topLeft(), inside.topRight());
        ground.setColorAt(0.0, color.lighter(135));
        ground.setColorAt(0.5, color);
        ground.setColorAt(1.0, color.darker(115));
        painter.fillRect(filled, ground);
    }
};

class ProgressBarPeer final : public ControlPeer {
public:
    ProgressBarPeer(ProgressBar& bar, QWidget& content) : ControlPeer(bar) {
        m_bar = new Reporting<LevelWidget>(GetLink(), &content);
        Adopt(*m_bar);
    }

private:
    void UpdateOwn() override {
        const auto& bar = Held<ProgressBar>();
        m_bar->setOrientation(bar.Height() > bar.Width() ? Qt::Vertical : Qt::Horizontal);
        m_bar->setRange(0, bar.Maximum());
        m_bar->setValue(bar.Value());
    }

    QProgressBar* m_bar;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(ProgressBar& bar, QWidget& content) {
    return std::make_unique<ProgressBarPeer>(bar, content);
}

} // namespace kirolane::qt
