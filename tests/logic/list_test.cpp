#include "contract/keyboard.h"
#include "twin_test.h"

namespace kirolane::tests {

class ListTest : public TwinTest {};

INSTANTIATE_TEST_SUITE_P(Of, ListTest, ::testing::Bool(), TwinName);

TEST_P(ListTest, OpeningARowMarksItAndWritesItsDurationAndType) {
    Script("a", {.length = 3725.9});
    Script("b", {.length = 59.99});
    StartWithFiles({"a", "b"});
    Act("open 0");
    EXPECT_EQ(Counter(), "1 / 2 ●0");
    EXPECT_EQ(List()->Cell(0, 2), "01：02：05");
    EXPECT_EQ(Text("MediaType"), Either("QTM", "Wave"));
    Act("open 1");
    EXPECT_EQ(Counter(), "2 / 2 ●1");
    EXPECT_EQ(List()->Cell(0, 2), "01：02：05") << "a row keeps what it was opened with";
    EXPECT_EQ(List()->Cell(1, 2), "00：00：59");
    Do([] { // as after opening a file of the other list
        Console().GetListIndex_Flag = Either(1, 0);
        Either(Console().mFileNumberLabel(), Console().FileNumberLabel())->SetCaption("1 / 1");
    });
    Act("CloseKey");
    EXPECT_EQ(Counter(), "2 / 2") << "the label of the list opened last is reset, not this one";
    EXPECT_EQ(Either(Console().mFileNumberLabel(), Console().FileNumberLabel())->Caption(), "2");
}

TEST_P(ListTest, ARowThatDoesNotOpenSaysSoAndLeavesNoMark) {
    StartWithFiles({"a", "bad"});
    Script("bad", {.opens = false});
    Act("open 0");
    Scan(Console().Setting_Data(22));
    Act("open 1");
    EXPECT_EQ(List()->Cell(1, 2), kFailed);
    EXPECT_EQ(Counter(), "2");
    EXPECT_EQ(State(), "closed");
    EXPECT_EQ(Text("MediaType"), Either("QTM", "Wave")) << "the type comes from the name alone";
    Script("bad", {.length = 5.0}); // mended: it can be tried again
    Act("open 1");
    EXPECT_EQ(List()->Cell(1, 2), "00：00：05");
    EXPECT_EQ(Counter(), "2 / 2 ●1");
}

TEST_P(ListTest, BlankRowsAndNoSelectionStandForTheFirstRow) {
    StartWithFiles({"a", "b"});
    Walk({{"open 1", "再生中 b 0 bar 0"}, {"open 20", "再生中 a 0 bar 0"}});
    EXPECT_EQ(List()->ListIndex(), 0);

    Scan(MakeFiles("one", {"c"}));
    Do([] { List()->OnChange = nullptr; }); // else it never stays without a selection
    List()->ReportSelection(-1);
    List()->ReportDoubleClick();
    EXPECT_EQ(List()->ListIndex(), 0);
    EXPECT_EQ(State(), "再生中 c 0 bar 0");

    Scan(MakeFiles("empty", {})); // where nothing can be opened
    Do([] { Console().GetListIndex_Flag = Either(1, 0); });
    Media().ForgetOrders();
    Walk({{"open 3", "再生中 c 0 bar 0"}});
    EXPECT_EQ(Console().GetListIndex_Flag, Either(1, 0));
    EXPECT_TRUE(Media().Orders().empty());
}

TEST_P(ListTest, ArrowsStepOneRowWithoutWrappingAndAClearedSelectionComesBackAtOneEnd) {
    StartWithFiles({"a", "b"});
    const struct {
        std::int32_t from;
        int key;
        std::int32_t to;
    } rows[] = {{0, Keyboard::kLeftArrow, 0},  {0, Keyboard::kRightArrow, 1},
                {1, Keyboard::kRightArrow, 2}, {1, Keyboard::kLeftArrow, 0},
                {2, Keyboard::kLeftArrow, 1},  {25, Keyboard::kRightArrow, 25}}; // blank rows are rows
    for (const auto& [from, key, to] : rows) {
        List()->ReportSelection(from);
        Windows().HoldKey(key);
        EXPECT_FALSE(List()->ReportKey("x"));
        Windows().ReleaseKey(key);
        EXPECT_EQ(List()->ListIndex(), to) << from;
    }
    EXPECT_FALSE(List()->ReportKey("left")) << "no key is held";
    EXPECT_EQ(List()->ListIndex(), 25);
    List()->ReportSelection(-1);
    EXPECT_EQ(List()->ListIndex(), 0);
    List()->ReportScroll(3);
    List()->ReportSelection(-1);
    EXPECT_EQ(List()->ListIndex(), 25);
}

TEST_P(ListTest, ASortMovesTheMarkAndTheListGoesOnFromTheRowSelectedBefore) {
    StartWithFiles({"a", "b", "c"});
    Act("open 0");
    List()->ReportSelection(2);
    List()->ReportHeadingClick(1);
    List()->ReportHeadingClick(1); // c, b, a
    EXPECT_EQ(Listed(), (std::vector<std::string>{"c", "b", "a"}));
    EXPECT_EQ(Counter(), "1 / 3 ●2") << "until the next open";
    EXPECT_EQ(Either(Console().File_Number, Console().mFile_Number), 2) << "the selection before, by number";
    Walk({{"open 0", "再生中 c 0 bar 0"}});
    EXPECT_EQ(Counter(), "1 / 3 ●0");
}

} // namespace kirolane::tests
