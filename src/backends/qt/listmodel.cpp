#include "backends/qt/listmodel.h"

#include "backends/qt/convert.h"

#include <algorithm>

namespace kirolane::qt {

void ListModel::TakeChanges(int firstSeen, int lastSeen) {
    Listbox* list = List();
    if (list == nullptr)
        return;
    const Listbox::Changes changes = list->TakeChanges();
    if (changes.reset) {
        beginResetModel();
        m_rows = list->ListCount();
        endResetModel();
        return;
    }
    const int first = std::max(changes.firstDirty, firstSeen);
    const int last = std::min({changes.lastDirty, lastSeen, m_rows - 1});
    if (first <= last)
        Q_EMIT dataChanged(index(first, 0), index(last, columnCount(QModelIndex()) - 1));
}

void ListModel::TakeRows() {
    const Listbox* list = List();
    if (list == nullptr || list->ListCount() <= m_rows)
        return;
    beginInsertRows(QModelIndex(), m_rows, list->ListCount() - 1);
    m_rows = list->ListCount();
    endInsertRows();
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || List() == nullptr ? 0 : List()->ColumnCount();
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (List() == nullptr)
        return {};
    return role == Qt::DisplayRole ? ToText(List()->Cell(index.row(), index.column())) : QVariant();
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || List() == nullptr)
        return {};
    if (role == Qt::DisplayRole)
        return ToText(List()->Heading(section));
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

} // namespace kirolane::qt
