#pragma once

#include "contract/graphics.h"
#include "contract/rectcontrol.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kirolane {

/// A list of rows with up to three columns of text.
class Listbox : public RectControl {
public:
    static constexpr std::int32_t kMaxColumns = 3;

    Listbox(class Window& window, const ControlDesign& design);

    [[nodiscard]] std::int32_t ListCount() const { return static_cast<std::int32_t>(m_rows.size()); }
    [[nodiscard]] std::int32_t ColumnCount() const { return static_cast<std::int32_t>(m_widths.size()); }
    /// Pixels of each column.
    [[nodiscard]] const std::vector<std::int32_t>& ColumnWidths() const { return m_widths; }
    /// What a row is about: the widest.
    [[nodiscard]] std::int32_t MainColumn() const {
        return static_cast<std::int32_t>(std::max_element(m_widths.begin(), m_widths.end()) -
                                         m_widths.begin());
    }

    /// Zero-based selected row, -1 for none.
    [[nodiscard]] std::int32_t ListIndex() const { return m_listIndex; }
    /// A row outside the list becomes -1. Fires Change before it returns, only if the index differs.
    void SetListIndex(std::int32_t row);

    /// "" for a cell outside the list. A name that is not UTF-8 keeps its bytes.
    [[nodiscard]] const std::string& Cell(std::int32_t row, std::int32_t column) const;
    /// Outside the list nothing is written.
    void SetCell(std::int32_t row, std::int32_t column, std::string text);
    /// Appends a row with text in column 0.
    void AddRow(std::string text);
    /// Removes all rows, and with them the order they were sorted in; then takes the selection to -1, which
    /// fires Change if there was one.
    void DeleteAllRows();

    [[nodiscard]] const std::string& Heading(std::int32_t column) const;
    void SetHeading(std::int32_t column, std::string text);
    /// 0 none, 1 ascending, -1 descending.
    [[nodiscard]] std::int32_t ColumnSortDirection(std::int32_t column) const;
    void SetColumnSortDirection(std::int32_t column, std::int32_t direction);
    /// Sorts by the column whose heading was pressed last, in its direction; nothing if there is none. Names
    /// stand as CompareNames orders them, rows all of whose cells are empty always last, equal rows stay in
    /// order. The selection stays on its row's content; no Change is fired.
    void Sort();

    /// Top visible row, as the window last told.
    [[nodiscard]] std::int32_t ScrollPosition() const { return m_scrollPosition; }
    [[nodiscard]] bool ScrollBarVertical() const { return m_scrollBarVertical; }
    void SetScrollBarVertical(bool shown);

    /// Paints the ground of one cell; true means that the ground is done, false leaves the selection's
    /// highlight to the back end. Runs within a paint: it must change nothing.
    std::function<bool(Graphics& g, std::int32_t row, std::int32_t column)> OnCellBackgroundPaint;
    /// A key for the list; true keeps it from the list's own handling.
    std::function<bool(const std::string& key)> OnKeyDown;
    std::function<void()> OnChange;
    std::function<void()> OnDoubleClick;
    /// A heading was pressed; true prevents the sort.
    std::function<bool(std::int32_t column)> OnSortColumn;

    /// A person selected a row, or with -1 none.
    void ReportSelection(std::int32_t row);
    void ReportDoubleClick();
    bool ReportKey(const std::string& key);
    void ReportScroll(std::int32_t topRow) { m_scrollPosition = topRow; }
    /// A press on a heading: fires SortColumn, then sorts; the first press ascending, the next reversed.
    void ReportHeadingClick(std::int32_t column);

    /// What changed since the last call, for the back end that shows the list: `reset` if rows were removed
    /// or moved, else the rows from `firstAppended` on are new and the cells of rows firstDirty to lastDirty
    /// (none if last < first) were written.
    struct Changes {
        bool reset = false;
        std::int32_t firstAppended = 0;
        std::int32_t firstDirty = 0;
        std::int32_t lastDirty = -1;
    };
    Changes TakeChanges();

private:
    struct Row {
        std::array<std::string, kMaxColumns> cells;
    };

    [[nodiscard]] bool IsBlank(const Row& row) const;

    std::vector<std::int32_t> m_widths;
    std::array<std::string, kMaxColumns> m_headings;
    std::array<std::int32_t, kMaxColumns> m_directions{};
    std::vector<Row> m_rows;
    std::int32_t m_listIndex = -1;
    std::int32_t m_sortedColumn = -1;
    std::int32_t m_scrollPosition = 0;
    bool m_scrollBarVertical = true;
    Changes m_changes;
};

} // namespace kirolane
