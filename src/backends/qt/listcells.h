#pragma once

#include "backends/qt/controlpeer.h"

#include <QAbstractItemDelegate>

namespace kirolane::qt {

/// Paints the cells of a list: the ground as the control's event does it, the selection's highlight where
/// that leaves it to the back end, the text.
class ListCells : public QAbstractItemDelegate {
public:
    ListCells(ControlLink list, QObject* parent) : QAbstractItemDelegate(parent), m_list(std::move(list)) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    ControlLink m_list;
};

} // namespace kirolane::qt
