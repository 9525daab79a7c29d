#include "contract/keyboard.h"
#include "logic_test.h"

namespace kirolane::tests {

class MovieListTest : public LogicTest {
protected:
    static Ref<Listbox> List() { return Console().StrGrid(); }
    static std::string Counter() { return Console().FileNumberLabel()->Caption(); }
};

TEST_F(MovieListTest, OpeningARowMarksItAndWritesItsDurationAndType) {
    StartWithMedia({"a.mov", "b.DivX", "c.txt"});
    Media().Script("a.mov", {.length = 3725.9});
    Media().Script("b.DivX", {.length = 59.99});
    Open(0);
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{0});
    EXPECT_EQ(List()->Cell(0, 2), "01：02：05");
    EXPECT_EQ(Console().MediaType()->Caption(), "QTM");
    EXPECT_EQ(Counter(), "1 / 2");
    EXPECT_EQ(Console().File_Number, 0);
    EXPECT_FALSE(Console().Fold_Flag);

    Open(1);
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{1});
    EXPECT_EQ(List()->Cell(0, 2), "01：02：05") << "a row keeps what it was opened with";
    EXPECT_EQ(List()->Cell(1, 2), "00：00：59");
    EXPECT_EQ(Console().MediaType()->Caption(), "DivX");
    EXPECT_EQ(Counter(), "2 / 2");
}

TEST_F(MovieListTest, ARowThatDoesNotOpenSaysSoAndLeavesNoMark) {
    StartWithMedia({"a.mov", "bad.mov"});
    Media().Script("bad.mov", {.opens = false});
    Open(0);
    Scan(Console().Setting_Data(22));
    Open(1);
    EXPECT_EQ(List()->Cell(1, 2), kFailed);
    EXPECT_TRUE(Marked(List()).empty());
    EXPECT_EQ(Console().File_Number, 1);
    EXPECT_TRUE(Console().Fold_Flag) << "as the scan left it";
    EXPECT_EQ(Console().MediaType()->Caption(), "QTM") << "the type comes from the name alone";
    EXPECT_TRUE(Console().QTM()->Movie().IsNil());
    EXPECT_EQ(Counter(), "2");

    Media().Script("bad.mov", {.length = 5.0}); // mended: it can be tried again
    Open(1);
    EXPECT_EQ(List()->Cell(1, 2), "00：00：05");
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{1});
}

TEST_F(MovieListTest, BlankRowsAndNoSelectionStandForTheFirstRow) {
    StartWithMedia({"a.mov", "b.mov"});
    Open(1);
    Open(20);
    EXPECT_EQ(List()->ListIndex(), 0);
    EXPECT_EQ(Console().FileLabel()->Caption(), "a.mov");

    Scan(MakeMedia("one", {"c.mov"}));
    Do([] { Console().StrGrid()->OnChange = nullptr; }); // else it never stays without a selection
    List()->ReportSelection(-1);
    List()->ReportDoubleClick();
    EXPECT_EQ(List()->ListIndex(), 0);
    EXPECT_EQ(Console().FileLabel()->Caption(), "c.mov");
}

TEST_F(MovieListTest, ADoubleClickInAnEmptyListChangesNothing) {
    StartWithMedia({"a.mov"});
    Open(0);
    Scan(MakeMedia("empty", {}));
    Do([] { Console().GetListIndex_Flag = 1; });
    Media().ForgetOrders();
    Open(3);
    EXPECT_EQ(Console().GetListIndex_Flag, 1);
    EXPECT_TRUE(Console().QTM()->Running());
    EXPECT_TRUE(Media().Orders().empty());
}

TEST_F(MovieListTest, LeftAndRightStepOneRowWithoutWrapping) {
    StartWithMedia({"a.mov", "b.mov"});
    const auto press = [&](int code) {
        Windows().HoldKey(code);
        EXPECT_FALSE(List()->ReportKey("x"));
        Windows().ReleaseKey(code);
        return List()->ListIndex();
    };
    List()->ReportSelection(0);
    EXPECT_EQ(press(Keyboard::kLeftArrow), 0);
    EXPECT_EQ(press(Keyboard::kRightArrow), 1);
    EXPECT_EQ(press(Keyboard::kRightArrow), 2) << "blank rows are rows";
    EXPECT_EQ(press(Keyboard::kLeftArrow), 1);
    List()->ReportSelection(25);
    EXPECT_EQ(press(Keyboard::kRightArrow), 25);
    EXPECT_FALSE(List()->ReportKey("right")) << "no key is held";
    EXPECT_EQ(List()->ListIndex(), 25);
}

TEST_F(MovieListTest, AClearedSelectionComesBackAtOneEnd) {
    StartWithMedia({"a.mov", "b.mov"});
    List()->ReportSelection(1);
    List()->ReportSelection(-1);
    EXPECT_EQ(List()->ListIndex(), 0);
    List()->ReportScroll(3);
    List()->ReportSelection(-1);
    EXPECT_EQ(List()->ListIndex(), 25);
}

TEST_F(MovieListTest, ASortMovesTheMarkAndTheListGoesOnFromTheRowSelectedBefore) {
    StartWithMedia({"a.mov", "b.mov", "c.mov"});
    Open(0);
    List()->ReportSelection(2);
    List()->ReportHeadingClick(1);
    List()->ReportHeadingClick(1); // c, b, a
    EXPECT_EQ(Names(List()), (std::vector<std::string>{"c.mov", "b.mov", "a.mov"}));
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{2});
    EXPECT_EQ(Console().File_Number, 2) << "the selection before, by number";
    EXPECT_EQ(Counter(), "1 / 3") << "until the next open";
    Open(0);
    EXPECT_EQ(Console().FileLabel()->Caption(), "c.mov");
    EXPECT_EQ(Marked(List()), std::vector<std::int32_t>{0});
}

TEST_F(MovieListTest, TheCounterOfTheListOpenedLastIsReset) {
    StartWithMedia({"a.mov", "b.mov"}, {"s.wav"});
    Open(1);
    Do([] {
        Console().GetListIndex_Flag = 1; // as after opening a sound
        Console().mFileNumberLabel()->SetCaption("1 / 1");
    });
    Choose("CloseKey");
    EXPECT_EQ(Counter(), "2 / 2") << "the movie's label keeps its position";
    EXPECT_EQ(Console().mFileNumberLabel()->Caption(), "1");
}

} // namespace kirolane::tests
