#include "contract/keyboard.h"
#include "twin_test.h"

namespace kirolane::tests {

/// A list's rows, and its folder buttons.
class ListTest : public TwinTest {
protected:
    static void Press(std::int32_t n) { Own<BevelButton>("Fold" + Str(n))->ReportClick(); }
    static void ExpectPressed(std::int32_t number) {
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 99}) {
            EXPECT_EQ(Own<BevelButton>("Fold" + Str(n))->Value(), n == number) << n;
            EXPECT_EQ(Own<BevelButton>("Fold" + Str(n), !IsSound())->Value(), n == 1) << "the other list's";
        }
    }
    using Files = std::vector<std::string>;
};

INSTANTIATE_TEST_SUITE_P(Of, ListTest, ::testing::Bool(), TwinName);

TEST_P(ListTest, OpeningARowMarksItAndWritesItsDurationOrThatItFailed) {
    Script("a", {.length = 3725.9});
    Script("b", {.length = 59.99});
    Script("bad", {.opens = false});
    StartWithFiles({"a", "b", "bad"});
    Act("open 0");
    Scan(Console().Setting_Data(22));
    Act("open 2");
    EXPECT_EQ(List()->Cell(2, 2), kFailed);
    EXPECT_EQ(Shown("list"), "3");
    Script("bad", {.length = 5.0}); // mended: it can be tried again
    Act("open 2; open 0; open 1");
    EXPECT_EQ(List()->Cell(2, 2), "00：00：05");
    EXPECT_EQ(List()->Cell(0, 2), "01：02：05") << "a row keeps what it was opened with";
    EXPECT_EQ(List()->Cell(1, 2), "00：00：59");
}

TEST_P(ListTest, BlankRowsStandForTheFirstRow) {
    StartWithFiles({"a", "b"});
    Act("open 1; open 20");
    EXPECT_EQ(Shown("file"), "a");
    EXPECT_EQ(List()->ListIndex(), 0);

    Act("list"); // where nothing can be opened
    Do([] { TheListOpenedLast() = Either(1, 0); });
    Media().ForgetOrders();
    Walk({{"open 3", ""}});
    EXPECT_EQ(TheListOpenedLast(), Either(1, 0));
    EXPECT_TRUE(Media().Orders().empty());
}

TEST_P(ListTest, ArrowsStepOneRowWithoutWrappingAndAClearedSelectionComesBackAtOneEnd) {
    StartWithFiles({"a", "b"});
    const std::tuple<std::int32_t, int, std::int32_t> rows[] = {{0, Keyboard::kLeftArrow, 0},
                                                                {0, Keyboard::kRightArrow, 1},
                                                                {1, Keyboard::kRightArrow, 2},
                                                                {1, Keyboard::kLeftArrow, 0},
                                                                {2, Keyboard::kLeftArrow, 1},
                                                                {25, Keyboard::kRightArrow, 25},
                                                                {25, 125, 25}}; // blank rows are rows
    for (const auto& [from, key, to] : rows) {
        List()->ReportSelection(from);
        Windows().HoldKey(key);
        EXPECT_FALSE(List()->ReportKey("x"));
        Windows().ReleaseKey(key);
        EXPECT_EQ(List()->ListIndex(), to) << from;
    }
    Act("select -1");
    EXPECT_EQ(List()->ListIndex(), 0);
    List()->ReportScroll(3);
    Act("select -1");
    EXPECT_EQ(List()->ListIndex(), 25);
}

TEST_P(ListTest, ASortMovesTheMarkAndTheListGoesOnFromTheRowSelectedBefore) {
    StartWithFiles({"a", "b", "c"});
    Act("open 0; select 2");
    List()->ReportHeadingClick(1);
    List()->ReportHeadingClick(1);
    EXPECT_EQ(Listed(), (Files{"c", "b", "a"}));
    EXPECT_EQ(Shown("list"), "1 / 3 ●2") << "until the next open";
    EXPECT_EQ(Either(Console().File_Number, Console().mFile_Number), 2) << "the selection before, by number";
    Act("open 0");
    EXPECT_EQ(Shown("list") + Shown("file"), "1 / 3 ●0c");
}

TEST_P(ListTest, AButtonListsItsFolderAndStaysDownAndOfSeveralTheLastCounts) {
    const std::string first = MakeFiles("first", {"a"});
    const std::string third = MakeFiles("third", {"b", "c"});
    WriteSettings({{22, first}, {24, third}, {33, first}, {35, third}});
    Start();
    Press(3);
    ExpectPressed(3);
    Settle();
    EXPECT_EQ(Listed(), (Files{"b", "c"}));
    EXPECT_EQ(Names(Own<Listbox>("StrGrid", !IsSound())), Files{Either("a.wav", "a.mov")});
    MakeFiles("third", {"d"});
    Press(3); // down already: lists anew
    Settle();
    EXPECT_EQ(Shown("list"), "3");
    for (const std::int32_t n : {3, 10, 1, 3, 1})
        Press(n);
    Settle();
    EXPECT_EQ(Listed(), Files{"a"});

    // A folder that is chosen on the spot is remembered.
    const std::string chosen = MakeFiles("chosen", {"x"});
    Press(99); // cancelled
    ExpectPressed(1);
    Windows().PrepareFolder(Folder().Path("chosen"));
    Press(99);
    Settle();
    ExpectPressed(99);
    EXPECT_EQ(Console().Setting_Data(Either(43, 44)), chosen);
    EXPECT_EQ(Own<BevelButton>("Fold99")->HelpTag(), chosen);
    EXPECT_EQ(Listed(), Files{"x"});
}

TEST_P(ListTest, TheFileOfTheStartIsSelectedInItsFolderAndNotPlayed) {
    MakeFiles("chosen", {"a", "b:c", "z"});
    Start(Folder().Path(Either("chosen/b:c.mov", "chosen/b:c.wav")));
    ExpectPressed(99);
    EXPECT_EQ(List()->Cell(List()->ListIndex(), 1), Either("b/c.mov", "b/c.wav"));
    EXPECT_EQ(Console().ListTab()->Value(), Either(0, 1));
    EXPECT_FALSE(Console().FileOpen_Flag || Console().mFileOpen_Flag);
}

} // namespace kirolane::tests
