#include "backends/qt/listview.h"

#include "backends/qt/fonts.h"
#include "backends/qt/listcells.h"
#include "contract/window.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QTimerEvent>

namespace kirolane::qt {

namespace {

constexpr int kRowHeight = 11;
constexpr int kHeadingHeight = 20;
/// Rows that come below the view are taken over at most this often: each time costs a layout.
constexpr int kGrowthInterval = 40;

/// Its height stands, and so do the widths: Qt would measure each heading in bold type, for whose first use
/// the system looks through all its faces.
class Headings : public QHeaderView {
public:
    explicit Headings(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    [[nodiscard]] QSize sectionSizeFromContents(int /*column*/) const override { return {1, kHeadingHeight}; }
};

/// What a list is told of a key: the menu notation's name, or what it types.
std::string KeyName(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Left:
        return "left";
    case Qt::Key_Right:
        return "right";
    case Qt::Key_Up:
        return "up";
    case Qt::Key_Down:
        return "down";
    default:
        return event.text().toStdString();
    }
}

} // namespace

ListView::ListView(ControlLink list, QWidget* parent)
    : QTableView(parent), m_list(std::move(list)), m_model(m_list) {
    setHorizontalHeader(new Headings(this));
    // Before the model, for whose sake headings would be measured in faces that nobody sees.
    SetUpLook(List()->Design());
    setModel(&m_model);
    setItemDelegate(new ListCells(m_list, this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(NoDragDrop);
    setTabKeyNavigation(false);
    setFocusPolicy(Qt::ClickFocus);
    SetUpHeadings();
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int topRow) {
        if (auto* shown = List())
            shown->ReportScroll(topRow);
    });
}

void ListView::SetUpLook(const ControlDesign& design) {
    setFont(FontOf(design));
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setFont(font());
    verticalHeader()->setFont(font());
}

void ListView::SetUpHeadings() {
    QHeaderView& headings = *horizontalHeader();
    headings.setFixedHeight(kHeadingHeight);
    headings.setMinimumSectionSize(1);
    headings.setSectionResizeMode(QHeaderView::Fixed);
    headings.setHighlightSections(false);
    headings.setSectionsClickable(true);
    headings.setFocusPolicy(Qt::NoFocus);
    for (int column = 0; column < List()->ColumnCount(); ++column)
        headings.resizeSection(column, List()->ColumnWidths()[static_cast<std::size_t>(column)]);
    const auto press = [this](int column) {
        if (auto* list = List())
            list->ReportHeadingClick(column);
    };
    connect(&headings, &QHeaderView::sectionClicked, this, press);
    for (int column = 0; column < List()->ColumnCount();
         ++column) { // without a pointer; of the list that is seen
        auto* key = new QShortcut(
            QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key(Qt::Key_1 + column))), this);
        key->setAutoRepeat(false);
        connect(key, &QShortcut::activated, this, [press, column] { press(column); });
    }
}

void ListView::UpdateControl() {
    if (List() == nullptr)
        return;
    m_showing = true;
    setVerticalScrollBarPolicy(List()->ScrollBarVertical() ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    UpdateHeadings();
    UpdateRows();
    UpdateSelection();
    m_showing = false;
}

void ListView::UpdateHeadings() {
    int sorted = -1;
    for (int column = 0; column < List()->ColumnCount(); ++column)
        if (List()->ColumnSortDirection(column) != 0)
            sorted = column;
    QHeaderView& headings = *horizontalHeader();
    headings.setSortIndicatorShown(sorted >= 0);
    if (sorted >= 0)
        headings.setSortIndicator(sorted, List()->ColumnSortDirection(sorted) > 0 ? Qt::AscendingOrder
                                                                                  : Qt::DescendingOrder);
}

void ListView::UpdateRows() {
    m_model.TakeChanges(rowAt(0), LastRowSeen());
    const bool inView = m_model.Rows() <= LastRowSeen() + 1;
    if (inView || List()->ListIndex() >= m_model.Rows() || !m_growth.isActive()) {
        if (List()->ListCount() > m_model.Rows())
            m_growth.start(kGrowthInterval, this);
        m_model.TakeRows();
    }
}

void ListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_growth.timerId()) {
        QTableView::timerEvent(event);
        return;
    }
    if (List() == nullptr || List()->ListCount() == m_model.Rows())
        m_growth.stop();
    m_model.TakeRows();
}

int ListView::LastRowSeen() const {
    return verticalScrollBar()->value() + viewport()->height() / kRowHeight;
}

void ListView::UpdateSelection() {
    const int row = List()->ListIndex();
    const auto selected = selectionModel()->selectedRows();
    const bool stands = row == (selected.isEmpty() ? -1 : selected.front().row());
    if (stands && (row < 0 || currentIndex().column() == List()->MainColumn()))
        return;
    if (row < 0) {
        selectionModel()->clear();
        return;
    }
    const QModelIndex index = m_model.index(row, List()->MainColumn());
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!stands)
        scrollTo(index);
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    // Later, as the selection is in the middle of its change; presses and keys tell it themselves at once.
    if (!m_showing)
        QMetaObject::invokeMethod(
            this, [this] { ReportSelected(); }, Qt::QueuedConnection);
}

void ListView::ReportSelected() {
    Listbox* list = List();
    if (list == nullptr || m_showing)
        return;
    const auto selected = selectionModel()->selectedRows();
    const int row = selected.isEmpty() ? -1 : selected.front().row();
    if (row != list->ListIndex())
        list->ReportSelection(row);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    Listbox* list = List();
    if (list == nullptr || list->ReportKey(KeyName(*event)) || List() == nullptr)
        return;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (!selectionModel()->hasSelection() && m_model.Rows() > 0) {
            selectRow(verticalScrollBar()->value()); // where there is none to step from
            ReportSelected();
            break;
        }
        [[fallthrough]];
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        QTableView::keyPressEvent(event);
        ReportSelected();
        break;
    case Qt::Key_Left: // the list's own would move among the columns
    case Qt::Key_Right:
        break;
    default:
        event->ignore();
        break;
    }
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool home = action == MoveHome;
    if (List() != nullptr && m_model.Rows() > 0 && (home || action == MoveEnd))
        return m_model.index(home ? 0 : m_model.Rows() - 1, List()->MainColumn());
    return QTableView::moveCursor(action, modifiers);
}

void ListView::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !indexAt(event->position().toPoint()).isValid())
        clearSelection(); // which the toolkit's newer versions leave as it is
    ReportSelected();
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
    QTableView::mouseMoveEvent(event);
    ReportSelected();
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    ReportSelected();
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    const bool onRow = event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid();
    QTableView::mouseDoubleClickEvent(event);
    ReportSelected();
    if (onRow && List() != nullptr)
        List()->ReportDoubleClick();
}

} // namespace kirolane::qt
