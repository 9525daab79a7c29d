#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "contract/groupbox.h"

#include <QGroupBox>
#include <QPainter>

namespace kirolane::qt {

namespace {

/// A caption above a frame. Labels stand beside some captions, so the frame begins below them.
class FrameWidget : public QGroupBox {
public:
    FrameWidget(const QString& caption, QWidget* parent) : QGroupBox(caption, parent) {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr int kCaptionHeight = 17;
        constexpr qreal kRound = 4.0;
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(6, 0, width() - 12, kCaptionHeight), Qt::AlignLeft | Qt::AlignVCenter,
                         title());

        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(0, 0, 0, 0x38));
        painter.setBrush(QColor(0, 0, 0, 0x08));
        const QRectF frame(0.5, kCaptionHeight + 0.5, width() - 1.0, height() - kCaptionHeight - 1.0);
        painter.drawRoundedRect(frame, kRound, kRound);
    }
};

class GroupBoxPeer final : public ControlPeer {
public:
    GroupBoxPeer(GroupBox& box, QWidget& content) : ControlPeer(box) {
        auto* widget = new FrameWidget(ToText(box.Caption()), &content);
        widget->setFont(FontOf(box.Design()));
        widget->setFocusPolicy(Qt::NoFocus);
        Adopt(*widget);
    }

private:
    void UpdateOwn() override {}
    [[nodiscard]] QString SpokenName() const override { return ToText(Held<GroupBox>().Caption()); }
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(GroupBox& box, QWidget& content) {
    return std::make_unique<GroupBoxPeer>(box, content);
}

} // namespace kirolane::qt
