#include "backends/qt/listcells.h"

#include "backends/qt/convert.h"
#include "contract/listbox.h"

#include <QModelIndex>
#include <QPainter>
#include <QStyleOptionViewItem>

namespace kirolane::qt {

namespace {

/// Of the selection while another window has the keyboard.
const QColor kPaleHighlight(0xC4, 0xCF, 0xE0);

class CellGraphics : public Graphics {
public:
    CellGraphics(QPainter& painter, const QRect& cell) : m_painter(painter), m_cell(cell) {}

    [[nodiscard]] std::int32_t Width() const override { return m_cell.width(); }
    [[nodiscard]] std::int32_t Height() const override { return m_cell.height(); }
    void SetForeColor(Color color) override { m_color = ToQt(color); }
    void FillRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override {
        const QRect wanted(m_cell.x() + x, m_cell.y() + y, width, height);
        m_painter.fillRect(wanted.intersected(m_cell), m_color);
    }

private:
    QPainter& m_painter;
    QRect m_cell;
    QColor m_color = Qt::black;
};

} // namespace

void ListCells::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto* list = m_list.As<Listbox>();
    if (list == nullptr)
        return;
    CellGraphics graphics(*painter, option.rect);
    const bool done =
        list->OnCellBackgroundPaint && list->OnCellBackgroundPaint(graphics, index.row(), index.column());
    const bool highlit = !done && (option.state & QStyle::State_Selected);
    const bool bright = highlit && (option.state & QStyle::State_Active);
    if (highlit)
        painter->fillRect(option.rect, bright ? option.palette.color(QPalette::Highlight) : kPaleHighlight);

    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty())
        return;
    const QRect place = option.rect.adjusted(4, 0, -2, 0);
    painter->setFont(option.font);
    painter->setPen(option.palette.color(bright ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(text, Qt::ElideMiddle, place.width()));
}

QSize ListCells::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    return {0, option.fontMetrics.height()};
}

} // namespace kirolane::qt
