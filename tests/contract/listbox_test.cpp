#include "contract/listbox.h"

#include "support/console_test.h"

namespace kirolane::tests {

using Names = std::vector<std::string>;

class ListboxTest : public ConsoleTest {
protected:
    ListboxTest() {
        Grid().OnChange = [this] { ++m_changes; };
    }
    Listbox& Grid() { return Get<Listbox>("Grid"); }
    int TakeChangeEvents() { return std::exchange(m_changes, 0); }
    /// Rows with these names in column 1.
    void Fill(const Names& names) {
        for (const auto& name : names) {
            Grid().AddRow("");
            Grid().SetCell(Grid().ListCount() - 1, 1, name);
        }
    }
    Names Rows() {
        Names names;
        for (std::int32_t row = 0; row < Grid().ListCount(); ++row)
            names.push_back(Grid().Cell(row, 1));
        return names;
    }

private:
    int m_changes = 0;
};

TEST_F(ListboxTest, CellsOutsideTheListReadEmptyAndTakeNothing) {
    EXPECT_EQ(Grid().ColumnWidths(), (std::vector<std::int32_t>{18, 348, 50}));
    Grid().AddRow("●");
    for (const auto& [row, column] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 3}}) {
        Grid().SetCell(row, column, "x");
        EXPECT_EQ(Grid().Cell(row, column), "");
    }
    EXPECT_EQ(Grid().ListCount(), 1);
    EXPECT_EQ(Grid().Cell(0, 0), "●");
}

TEST_F(ListboxTest, ChangeFiresOnlyForARealChangeOfTheSelection) {
    const auto select = [this](std::int32_t row, std::int32_t index, int events) {
        for (int again = 0; again < 2; ++again)
            Grid().SetListIndex(row);
        EXPECT_EQ(Grid().ListIndex(), index);
        EXPECT_EQ(TakeChangeEvents(), events);
    };
    select(0, -1, 0); // there is no row yet
    Fill({"a", "b"});
    select(1, 1, 1);
    select(2, -1, 1);
    Grid().ReportSelection(0);
    Grid().ReportSelection(0);
    EXPECT_EQ(TakeChangeEvents(), 1);
    Grid().DeleteAllRows();
    Grid().DeleteAllRows();
    EXPECT_EQ(Grid().ListIndex(), -1);
    EXPECT_EQ(TakeChangeEvents(), 1);
}

TEST_F(ListboxTest, AHeadingSortsByItsColumnAndAgainToReverseWithBlankRowsLast) {
    Fill({"clip 10.mov", "", "Clip 2.mov", "", "clip 1.mov"});
    Grid().SetListIndex(2);
    TakeChangeEvents();
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Rows(), (Names{"clip 1.mov", "Clip 2.mov", "clip 10.mov", "", ""}));
    EXPECT_EQ(Grid().ColumnSortDirection(1), 1);
    EXPECT_EQ(Grid().ListIndex(), 1) << "the selection stays on its row";
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Rows(), (Names{"clip 10.mov", "Clip 2.mov", "clip 1.mov", "", ""}));
    EXPECT_EQ(Grid().ColumnSortDirection(1), -1);
    EXPECT_EQ(Grid().ListIndex(), 1);
    EXPECT_EQ(TakeChangeEvents(), 0);

    Grid().SetCell(1, 2, "00：01：00"); // only one row has a text in column 2: the others stay as they stand
    Grid().ReportHeadingClick(2);
    EXPECT_EQ(Grid().ColumnSortDirection(1), 0);
    EXPECT_EQ(Rows(), (Names{"clip 10.mov", "clip 1.mov", "Clip 2.mov", "", ""}));
    Grid().ReportHeadingClick(2);
    EXPECT_EQ(Rows(), (Names{"Clip 2.mov", "clip 10.mov", "clip 1.mov", "", ""}));

    Grid().ReportHeadingClick(1);
    Grid().DeleteAllRows();
    Fill({"b", "a", "c"});
    EXPECT_EQ(Grid().ColumnSortDirection(1), 0) << "filled anew, it is not sorted";
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Rows(), (Names{"a", "b", "c"}));
}

TEST_F(ListboxTest, SortColumnMayPreventTheSort) {
    Fill({"b", "a"});
    Grid().OnSortColumn = [&](std::int32_t column) { return column == 0; };
    Grid().ReportHeadingClick(0);
    EXPECT_EQ(Rows(), (Names{"b", "a"}));
    Grid().ReportHeadingClick(1);
    EXPECT_EQ(Rows(), (Names{"a", "b"}));
    Grid().SetColumnSortDirection(1, 0);
    Fill({"0"});
    Grid().Sort();
    EXPECT_EQ(Rows(), (Names{"a", "b", "0"})) << "no direction, no sort";
}

TEST_F(ListboxTest, WhatChangedIsToldSoThatACopyCanFollow) {
    Names copy; // kept by TakeChanges alone, as a view's model is
    const auto follow = [&] {
        const auto changes = Grid().TakeChanges();
        if (changes.reset)
            copy.clear();
        const std::int32_t first = changes.reset ? 0 : changes.firstAppended;
        ASSERT_EQ(static_cast<std::int32_t>(copy.size()), first) << "rows went without a reset";
        for (std::int32_t row = first; row < Grid().ListCount(); ++row)
            copy.push_back(Grid().Cell(row, 1));
        ASSERT_LT(changes.lastDirty, first) << "a new row is told once";
        for (std::int32_t row = changes.firstDirty; row <= changes.lastDirty; ++row)
            copy.at(static_cast<std::size_t>(row)) = Grid().Cell(row, 1);
    };
    const std::function<void()> steps[] = {
        [&] {
            Fill({"d", "c", "b"});
        },
        [&] { Grid().SetCell(1, 1, "C"); },
        [&] { // new and written, and old ones in both orders
            Fill({"e"});
            Grid().SetCell(3, 1, "E");
            for (const int row : {1, 0, 2})
                Grid().SetCell(row, 1, std::to_string(row));
        },
        [&] { Grid().ReportHeadingClick(1); },
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
        follow();
        EXPECT_EQ(copy, Rows());
    }
}

} // namespace kirolane::tests
