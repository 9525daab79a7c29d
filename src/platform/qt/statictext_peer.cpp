#include "platform/qt/controlpeers.h"
#include "platform/qt/convert.h"
#include "platform/qt/fonts.h"
#include "platform/qt/reporting.h"
#include "platform/statictext.h"

#include <QLabel>
#include <QPainter>
#include <QTextLayout>

namespace kirolane::qt {

namespace {

Qt::Alignment AlignmentOf(TextAlign align) {
    switch (align) {
    case TextAlign::Centre:
        return Qt::AlignHCenter;
    case TextAlign::Right:
        return Qt::AlignRight;
    case TextAlign::Left:
        break;
    }
    return Qt::AlignLeft;
}

/// A label that draws its text itself: what is too long for its box is cut in the middle, so that the ending
/// of a name and the last folder of a path stay readable.
class LabelWidget : public QLabel {
public:
    LabelWidget(const ControlDesign& design, QWidget* parent)
        : QLabel(parent), m_align(AlignmentOf(design.textAlign)), m_multiline(design.multiline) {
        setTextFormat(Qt::PlainText);
        setFont(FontOf(design));
        const QColor color = ToQt(design.textColor);
        QColor faded = color;
        faded.setAlpha(0x60);
        QPalette colors = palette();
        colors.setColor(QPalette::WindowText, color);
        colors.setColor(QPalette::Disabled, QPalette::WindowText, faded);
        setPalette(colors);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        if (text().isEmpty())
            return;
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        if (m_multiline) {
            DrawLines(painter);
            return;
        }
        const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
        painter.drawText(rect(), static_cast<int>(m_align | Qt::AlignVCenter) | Qt::TextSingleLine, line);
    }

private:
    /// As many lines as the box is high for; the last one holds the rest, cut if need be. Names have few
    /// blanks, so a line may break anywhere.
    void DrawLines(QPainter& painter) const {
        const int lineHeight = fontMetrics().height();
        const int lines = std::max(1, height() / lineHeight);
        QTextLayout layout(text(), font());
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (int i = 0; i < lines; ++i) {
            QTextLine line = layout.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(width());
            QString shown = text().mid(line.textStart(), line.textLength());
            if (i == lines - 1)
                shown = fontMetrics().elidedText(text().mid(line.textStart()), Qt::ElideMiddle, width());
            painter.drawText(QRect(0, i * lineHeight, width(), lineHeight),
                             static_cast<int>(m_align | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
        }
        layout.endLayout();
    }

    Qt::Alignment m_align;
    bool m_multiline;
};

class StaticTextPeer final : public ControlPeer {
public:
    StaticTextPeer(StaticText& label, QWidget& content) : ControlPeer(label) {
        m_label = new Reporting<LabelWidget>(GetLink(), label.Design(), &content);
        Adopt(*m_label);
    }

private:
    void ShowOwn() override {
        const QString text = SpokenName();
        if (m_label->text() != text)
            m_label->setText(text);
    }
    [[nodiscard]] QString SpokenName() const override { return Shown(Held<StaticText>().Text()); }

    QLabel* m_label;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(StaticText& label, QWidget& content) {
    return std::make_unique<StaticTextPeer>(label, content);
}

} // namespace kirolane::qt
