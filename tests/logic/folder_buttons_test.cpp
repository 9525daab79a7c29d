#include "contract/core/colon_path.h"
#include "logic_test.h"

namespace kirolane::tests {

class FolderButtonsTest : public LogicTest {
protected:
    void SetUp() override {
        const std::string first = MakeMedia("first", {"a.mov", "a.wav"});
        const std::string third = MakeMedia("third", {"b.mov", "c.mov", "b.wav", "c.wav"});
        WriteSettings({{22, first}, {24, third}, {33, first}, {35, third}});
        Start();
    }
    static std::vector<std::int32_t> Pressed(bool sound) {
        std::vector<std::int32_t> pressed;
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 99})
            if ((sound ? Console().mFold(n) : Console().Fold(n))->Value())
                pressed.push_back(n);
        return pressed;
    }
};

TEST_F(FolderButtonsTest, APressListsItsFolderAndStaysDown) {
    Console().Fold(3)->ReportClick();
    EXPECT_EQ(Pressed(false), std::vector<std::int32_t>{3});
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), (std::vector<std::string>{"b.mov", "c.mov"}));
    EXPECT_EQ(Pressed(true), std::vector<std::int32_t>{1});
    EXPECT_EQ(Names(Console().mStrGrid()), std::vector<std::string>{"a.wav"});

    Console().mFold(3)->ReportClick();
    Settle();
    EXPECT_EQ(Pressed(true), std::vector<std::int32_t>{3});
    EXPECT_EQ(Names(Console().mStrGrid()), (std::vector<std::string>{"b.wav", "c.wav"}));

    static_cast<void>(Folder().Write("third/d.mov", ""));
    Console().Fold(3)->ReportClick(); // down already: lists anew
    Settle();
    EXPECT_EQ(Console().File_Count, 3);
}

TEST_F(FolderButtonsTest, OfSeveralPressesTheLastCounts) {
    for (const std::int32_t n : {3, 10, 1, 3, 1})
        Console().Fold(n)->ReportClick();
    Settle();
    EXPECT_EQ(Pressed(false), std::vector<std::int32_t>{1});
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"a.mov"});
    EXPECT_FALSE(Console().CountLabel()->Visible());
}

TEST_F(FolderButtonsTest, AFolderChosenOnTheSpotIsListedAndRemembered) {
    static_cast<void>(MakeMedia("chosen", {"x.mov", "y.wav"}));
    const std::string native = Folder().Path("chosen");
    const std::string colon = ToColonPath(native, true);
    Windows().PrepareFolder(native);
    Console().Fold(99)->ReportClick();
    Settle();
    EXPECT_EQ(Pressed(false), std::vector<std::int32_t>{99});
    EXPECT_EQ(Console().FoldNumber, 99);
    EXPECT_EQ(Console().Setting_Data(43), colon);
    EXPECT_EQ(Console().Fold(99)->HelpTag(), colon);
    EXPECT_EQ(Console().DirLabel()->Caption(), colon);
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"x.mov"});
    EXPECT_EQ(Console().Setting_Data(44), "nil");

    Windows().PrepareFolder(native);
    Console().mFold(99)->ReportClick();
    Settle();
    EXPECT_EQ(Console().Setting_Data(44), colon);
    EXPECT_EQ(Console().mFold(99)->HelpTag(), colon);
    EXPECT_EQ(Names(Console().mStrGrid()), std::vector<std::string>{"y.wav"});
}

TEST_F(FolderButtonsTest, AChangeOfPageMovesTheFocus) {
    Console().ListTab()->ReportPage(1);
    EXPECT_EQ(Console().FocusControl()->Name(), "mStrGrid");
    Console().ListTab()->ReportPage(0);
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
}

} // namespace kirolane::tests
