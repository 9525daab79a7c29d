#pragma once

#include "backends/qt/controlpeer.h"
#include "backends/qt/listmodel.h"

#include <QBasicTimer>
#include <QTableView>

namespace kirolane::qt {

/// The window of a list control onto its rows. Rows are 11 pixels high and the heading 20, so that a list of
/// the design's 318 shows 26 of them.
class ListView : public QTableView {
public:
    ListView(ControlLink list, QWidget* parent);

    /// Shows rows, headings and selection as the control holds them now.
    void UpdateControl();

    void keyboardSearch(const QString& /*search*/) override {} ///< letters are commands

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    [[nodiscard]] Listbox* List() const { return m_list.As<Listbox>(); }
    void SetUpLook(const ControlDesign& design);
    void SetUpHeadings();
    void UpdateHeadings();
    void UpdateRows();
    void UpdateSelection();
    /// Tells the control if a person has changed the selection.
    void ReportSelected();
    [[nodiscard]] int LastRowSeen() const;

    ControlLink m_list;
    ListModel m_model;
    QBasicTimer m_growth; ///< runs for a moment after rows were taken over
    bool m_showing = false;
};

} // namespace kirolane::qt
