#include "contract/listbox.h"

#include "support/contract_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

class ListboxTest : public tests::ContractTest {
protected:
    ListboxTest() : m_form(StartWith<tests::ConsoleForm>()) {
        Grid().OnChange = [this] { ++m_changes; };
    }

    Listbox& Grid() { return *m_form->Control<Listbox>("Grid"); }
    int TakeChangeEvents() { return std::exchange(m_changes, 0); }
    /// Rows with these names in column 1.
    void Fill(const std::vector<std::string>& names) {
        for (const auto& name : names) {
            Grid().AddRow("");
            Grid().SetCell(Grid().ListCount() - 1, 1, name);
        }
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(Grid().ListCount()));
        for (std::int32_t row = 0; row < Grid().ListCount(); ++row)
            names.push_back(Grid().Cell(row, 1));
        return names;
    }

private:
    Ref<tests::ConsoleForm> m_form;
    int m_changes = 0;
};

TEST_F(ListboxTest, CellsOutsideTheListReadEmptyAndTakeNothing) {
    EXPECT_EQ(Grid().ColumnCount(), 3);
    EXPECT_EQ(Grid().ColumnWidths(), (std::vector<std::int32_t>{18, 348, 50}));
    Grid().AddRow("●");
    EXPECT_EQ(Grid().Cell(0, 0), "●");
    for (const auto& [row, column] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 3}}) {
        Grid().SetCell(row, column, "x");
        EXPECT_EQ(Grid().Cell(row, column), "");
    }
    EXPECT_EQ(Grid().ListCount(), 1);
    Grid().SetCell(0, 1, "caf\xE9.mov");
    EXPECT_EQ(Grid().Cell(0, 1), "caf\xE9.mov");
}

TEST_F(ListboxTest, ChangeFiresOnlyForARealChangeOfTheSelection) {
    Grid().SetListIndex(0); // there is no row yet
    EXPECT_EQ(Grid().ListIndex(), -1);
    EXPECT_EQ(TakeChangeEvents(), 0);
    Fill({"a", "b"});
    Grid().SetListIndex(1);
    Grid().SetListIndex(1);
    EXPECT_EQ(TakeChangeEvents(), 1);
    Grid().SetListIndex(2);
    EXPECT_EQ(Grid().ListIndex(), -1);
    EXPECT_EQ(TakeChangeEvents(), 1);
    Grid().ReportSelection(0);
    Grid().ReportSelection(0);
    EXPECT_EQ(TakeChangeEvents(), 1);
    Grid().DeleteAllRows();
    EXPECT_EQ(Grid().ListIndex(), -1);
    EXPECT_EQ(TakeChangeEvents(), 1);
    Grid().DeleteAllRows();
    EXPECT_EQ(TakeChangeEvents(), 0);
}

TEST_F(ListboxTest, AHeadingSortsByItsColumnAndAgainToReverseWithBlankRowsLast) {
    Fill({"clip 10.mov", "", "Clip 2.mov", "", "clip 1.mov"});
    Grid().SetListIndex(2);
    TakeChangeEvents();
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"clip 1.mov", "Clip 2.mov", "clip 10.mov", "", ""}));
    EXPECT_EQ(Grid().ColumnSortDirection(1), 1);
    EXPECT_EQ(Grid().ListIndex(), 1) << "the selection stays on its row";
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"clip 10.mov", "Clip 2.mov", "clip 1.mov", "", ""}));
    EXPECT_EQ(Grid().ColumnSortDirection(1), -1);
    EXPECT_EQ(Grid().ListIndex(), 1);
    EXPECT_EQ(TakeChangeEvents(), 0);

    Grid().SetCell(1, 2, "00：01：00"); // only one row has a text in column 2: the others stay as they stand
    Grid().ReportHeadingClick(2);
    EXPECT_EQ(Grid().ColumnSortDirection(1), 0);
    EXPECT_EQ(Names(), (std::vector<std::string>{"clip 10.mov", "clip 1.mov", "Clip 2.mov", "", ""}));
    Grid().ReportHeadingClick(2);
    EXPECT_EQ(Names(), (std::vector<std::string>{"Clip 2.mov", "clip 10.mov", "clip 1.mov", "", ""}));

    Grid().ReportHeadingClick(1);
    Grid().DeleteAllRows();
    Fill({"b", "a", "c"});
    EXPECT_EQ(Grid().ColumnSortDirection(1), 0) << "filled anew, it is not sorted";
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(ListboxTest, SortColumnMayPreventTheSort) {
    Fill({"b", "a"});
    std::vector<std::int32_t> pressed;
    Grid().OnSortColumn = [&](std::int32_t column) {
        pressed.push_back(column);
        return column == 0;
    };
    Grid().ReportHeadingClick(0);
    EXPECT_EQ(Names(), (std::vector<std::string>{"b", "a"}));
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(pressed, (std::vector<std::int32_t>{0, 1}));
    Grid().SetColumnSortDirection(1, 0);
    Fill({"0"});
    Grid().Sort();
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b", "0"})) << "no direction, no sort";
}

/// A back end's copy of the list, kept by TakeChanges alone as a view's model is.
class Mirror {
public:
    explicit Mirror(Listbox& list) : m_list(list) {}
    void Follow() {
        const auto changes = m_list.TakeChanges();
        if (changes.reset)
            m_rows.clear();
        const std::int32_t first = changes.reset ? 0 : changes.firstAppended;
        ASSERT_EQ(static_cast<std::int32_t>(m_rows.size()), first) << "rows went without a reset";
        for (std::int32_t row = first; row < m_list.ListCount(); ++row)
            m_rows.push_back(m_list.Cell(row, 1));
        ASSERT_LT(changes.lastDirty, first) << "a new row is told once";
        for (std::int32_t row = changes.firstDirty; row <= changes.lastDirty; ++row)
            m_rows.at(static_cast<std::size_t>(row)) = m_list.Cell(row, 1);
    }
    [[nodiscard]] const std::vector<std::string>& Rows() const { return m_rows; }

private:
    Listbox& m_list;
    std::vector<std::string> m_rows;
};

TEST_F(ListboxTest, WhatChangedIsToldSoThatACopyCanFollow) {
    Mirror mirror(Grid());
    const std::vector<std::function<void()>> steps = {
        [&] {
            Fill({"d", "c"});
        },
        [&] { Grid().SetCell(1, 1, "C"); },
        [&] {
            Fill({"b"});
            Grid().SetCell(2, 1, "B"); // new and written
            Grid().SetCell(0, 1, "D");
        },
        [&] { Grid().ReportHeadingClick(1); },
        [&] {
            Fill({"e"});
            Grid().SetCell(3, 1, "E");
        },
        [&] {
            Grid().DeleteAllRows();
            Fill({"x", "y"});
        },
        [] {},
        [&] {
            Fill({"w"});
            Grid().ReportHeadingClick(1);
            Fill({"z"});
        },
        [&] { Grid().DeleteAllRows(); },
    };
    for (const auto& step : steps) {
        step();
        mirror.Follow();
        EXPECT_EQ(mirror.Rows(), Names());
    }
}

} // namespace
} // namespace kirolane
