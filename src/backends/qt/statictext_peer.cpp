#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/reporting.h"
#include "contract/statictext.h"

#include <QLabel>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cstdlib>

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
        : QLabel(parent), m_multiline(design.multiline) {
        setAlignment(AlignmentOf(design.textAlign) | Qt::AlignVCenter);
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

    void SetLabel(const QString& shown) {
        if (text() == shown)
            return;
        const bool came = text().isEmpty() != shown.isEmpty();
        setText(shown);
        if (came)
            ForOverlapping([](LabelWidget& other) { other.update(); });
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
        const QRect room = Room();
        const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
        painter.drawText(room, static_cast<int>(alignment()) | Qt::TextSingleLine, line);
    }

private:
    /// Calls visit for every other label whose line of text runs through this one's, from back to front.
    template <class Visit> void ForOverlapping(const Visit& visit) const {
        for (QObject* sibling : parentWidget()->children())
            if (auto* label = dynamic_cast<LabelWidget*>(sibling);
                label != nullptr && label != this && label->geometry().intersects(geometry()) &&
                std::abs(label->geometry().center().y() - geometry().center().y()) < fontMetrics().height())
                visit(*label);
    }
    /// The part of the box that no label further in front needs for its text: a long path ends before the
    /// sign that stands in its corner.
    [[nodiscard]] QRect Room() const {
        QRect room = rect();
        const auto& all = parentWidget()->children();
        ForOverlapping([&](const LabelWidget& other) {
            const bool inFront = all.indexOf(&other) > all.indexOf(this);
            const int start = other.x() - x();
            if (inFront && other.isVisible() && !other.text().isEmpty() && start > 0)
                room.setRight(std::min(room.right(), start - 1));
        });
        return room;
    }

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
                             static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
        }
        layout.endLayout();
    }

    bool m_multiline;
};

class StaticTextPeer final : public ControlPeer {
public:
    StaticTextPeer(StaticText& label, QWidget& content) : ControlPeer(label) {
        m_label = new Reporting<LabelWidget>(GetLink(), label.Design(), &content);
        if (label.Design().quiet)
            SetQuiet(*m_label);
        Adopt(*m_label);
    }

private:
    void UpdateOwn() override { m_label->SetLabel(ToText(Held<StaticText>().Text())); }
    [[nodiscard]] QString SpokenName() const override {
        return Control().Design().quiet ? ControlPeer::SpokenName()
                                        : QString(); // Qt says a label's text itself
    }

    LabelWidget* m_label;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(StaticText& label, QWidget& content) {
    return std::make_unique<StaticTextPeer>(label, content);
}

} // namespace kirolane::qt
