#pragma once

#include "backends/qt/controlpeer.h"
#include "contract/listbox.h"

#include <QAbstractTableModel>

namespace kirolane::qt {

/// The rows of a list control, as they are; nothing is copied.
class ListModel : public QAbstractTableModel {
public:
    explicit ListModel(ControlLink list) : m_list(std::move(list)) {}

    /// Takes over what changed, but for rows that were appended. `firstSeen` to `lastSeen` are the rows on
    /// show: changes of others need no telling, as they are read when they come into view.
    void TakeChanges(int firstSeen, int lastSeen);
    /// Takes over the rows that were appended.
    void TakeRows();
    [[nodiscard]] int Rows() const { return m_rows; }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] Listbox* List() const { return m_list.As<Listbox>(); }

    ControlLink m_list;
    int m_rows = 0; ///< as the view knows
};

} // namespace kirolane::qt
