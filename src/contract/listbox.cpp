#include "contract/listbox.h"

#include "contract/core/name_order.h"
#include "contract/core/runtime.h"

#include <algorithm>
#include <charconv>

namespace kirolane {

namespace {
const std::string kNothing;
}

Listbox::Listbox(class Window& window, const ControlDesign& design) : RectControl(window, design) {
    for (std::string_view rest = design.columnWidths; !rest.empty() && ColumnCount() < kMaxColumns;) {
        std::int32_t width = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), width);
        if (error != std::errc())
            break;
        m_widths.push_back(width);
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        if (!rest.empty())
            rest.remove_prefix(1);
    }
}

void Listbox::SetListIndex(std::int32_t row) {
    const std::int32_t chosen = row >= 0 && row < ListCount() ? row : -1;
    if (chosen == m_listIndex)
        return;
    m_listIndex = chosen;
    Changed();
    if (OnChange)
        OnChange();
}

const std::string& Listbox::Cell(std::int32_t row, std::int32_t column) const {
    if (row < 0 || row >= ListCount() || column < 0 || column >= ColumnCount())
        return kNothing;
    return m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)];
}

void Listbox::SetCell(std::int32_t row, std::int32_t column, std::string text) {
    if (row < 0 || row >= ListCount() || column < 0 || column >= ColumnCount())
        return;
    auto& cell = m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)];
    if (cell == text)
        return; // the loops over whole lists write mostly what is there
    cell = std::move(text);
    if (row < m_changes.firstAppended) {
        const bool none = m_changes.lastDirty < m_changes.firstDirty;
        m_changes.firstDirty = none ? row : std::min(m_changes.firstDirty, row);
        m_changes.lastDirty = none ? row : std::max(m_changes.lastDirty, row);
    }
    Changed();
}

void Listbox::AddRow(std::string text) {
    m_rows.emplace_back().cells[0] = std::move(text);
    Changed();
}

void Listbox::DeleteAllRows() {
    m_rows.clear();
    m_changes = {.reset = true};
    m_directions.fill(0); // what comes next stands in no order of this list's
    m_sortedColumn = -1;
    m_scrollPosition = 0;
    Changed();
    SetListIndex(-1);
}

const std::string& Listbox::Heading(std::int32_t column) const {
    return column >= 0 && column < ColumnCount() ? m_headings[static_cast<std::size_t>(column)] : kNothing;
}

void Listbox::SetHeading(std::int32_t column, std::string text) {
    if (column < 0 || column >= ColumnCount())
        return;
    m_headings[static_cast<std::size_t>(column)] = std::move(text);
    Changed();
}

std::int32_t Listbox::ColumnSortDirection(std::int32_t column) const {
    return column >= 0 && column < ColumnCount() ? m_directions[static_cast<std::size_t>(column)] : 0;
}

void Listbox::SetColumnSortDirection(std::int32_t column, std::int32_t direction) {
    if (column < 0 || column >= ColumnCount())
        return;
    m_directions[static_cast<std::size_t>(column)] = std::clamp(direction, -1, 1);
    Changed();
}

bool Listbox::IsBlank(const Row& row) const {
    return std::all_of(row.cells.begin(), row.cells.end(), [](const std::string& c) { return c.empty(); });
}

void Listbox::Sort() {
    const std::int32_t direction = ColumnSortDirection(m_sortedColumn);
    if (direction == 0)
        return;
    const auto column = static_cast<std::size_t>(m_sortedColumn);
    std::vector<std::string_view> names;
    std::vector<std::size_t> named; // their rows
    std::vector<std::size_t> order;
    order.reserve(m_rows.size());
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        if (IsBlank(m_rows[row]))
            continue;
        names.push_back(m_rows[row].cells[column]);
        named.push_back(row);
    }
    for (const std::uint32_t i :
         OrderOfNames(names, direction > 0 ? SortDirection::Ascending : SortDirection::Descending))
        order.push_back(named[i]);
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (IsBlank(m_rows[row]))
            order.push_back(row);

    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    std::int32_t selected = -1;
    for (const std::size_t from : order) {
        if (static_cast<std::int32_t>(from) == m_listIndex)
            selected = static_cast<std::int32_t>(sorted.size());
        sorted.push_back(std::move(m_rows[from]));
    }
    m_rows = std::move(sorted);
    m_listIndex = selected;
    m_changes = {.reset = true};
    Changed();
}

void Listbox::SetScrollBarVertical(bool shown) {
    if (shown == m_scrollBarVertical)
        return;
    m_scrollBarVertical = shown;
    Changed();
}

void Listbox::ReportSelection(std::int32_t row) {
    Runtime::Current().Deliver(Window(), Path() + " Change", [this, row] {
        Changed(); // shows the selection held, whatever the click left on the screen
        SetListIndex(row);
    });
}

void Listbox::ReportDoubleClick() {
    if (OnDoubleClick)
        Runtime::Current().Deliver(Window(), Path() + " DoubleClick", OnDoubleClick);
}

bool Listbox::ReportKey(const std::string& key) {
    bool consumed = false;
    if (OnKeyDown)
        Runtime::Current().DeliverNow(Window(), Path() + " KeyDown", [&] { consumed = OnKeyDown(key); });
    return consumed;
}

void Listbox::ReportHeadingClick(std::int32_t column) {
    Runtime::Current().Deliver(Window(), Path() + " SortColumn", [this, column] {
        if (column < 0 || column >= ColumnCount() || (OnSortColumn && OnSortColumn(column)))
            return;
        const std::int32_t before = m_sortedColumn == column ? ColumnSortDirection(column) : 0;
        m_directions.fill(0);
        m_sortedColumn = column;
        SetColumnSortDirection(column, before > 0 ? -1 : 1);
        Sort();
    });
}

Listbox::Changes Listbox::TakeChanges() {
    const Changes changes = m_changes;
    m_changes = {};
    m_changes.firstAppended = ListCount();
    return changes;
}

} // namespace kirolane
