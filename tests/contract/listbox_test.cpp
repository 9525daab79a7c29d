#include "contract/listbox.h"

#include "support/console_test.h"

namespace kirolane::tests {

class ListboxTest : public ConsoleTest {
protected:
    Listbox& Grid() { return Get<Listbox>("Grid"); }
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
};

TEST_F(ListboxTest, AHeadingSortsByItsColumnAndAgainToReverseWithBlankRowsLast) {
    Fill({"clip 10.mov", "", "Clip 2.mov", "", "clip 1.mov"});
    Grid().SetListIndex(2);
    Grid().OnChange = [] { FAIL(); };
    const auto click = [this](std::int32_t column, int direction, const Names& rows) {
        Grid().ReportHeadingClick(column);
        EXPECT_EQ(Rows(), rows);
        EXPECT_EQ(Grid().ColumnSortDirection(column), direction);
    };
    click(1, 1, {"clip 1.mov", "Clip 2.mov", "clip 10.mov", "", ""});
    EXPECT_EQ(Grid().ListIndex(), 1) << "the selection stays on its row";
    click(1, -1, {"clip 10.mov", "Clip 2.mov", "clip 1.mov", "", ""});
    Grid().SetCell(1, 2, "00：01：00"); // only one row has a text in column 2: the others stay as they stand
    click(2, 1, {"clip 10.mov", "clip 1.mov", "Clip 2.mov", "", ""});
    EXPECT_EQ(Grid().ColumnSortDirection(1), 0);
    click(2, -1, {"Clip 2.mov", "clip 10.mov", "clip 1.mov", "", ""});
    Grid().OnChange = nullptr;

    Grid().DeleteAllRows();
    EXPECT_EQ(Grid().ListIndex(), -1);
    Fill({"b", "a"});
    EXPECT_EQ(Grid().ColumnSortDirection(2), 0) << "filled anew, it is not sorted";
    click(1, 1, {"a", "b"});
}

} // namespace kirolane::tests
