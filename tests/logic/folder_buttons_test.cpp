#include "contract/core/colon_path.h"
#include "twin_test.h"

namespace kirolane::tests {

class FolderButtonsTest : public TwinTest {
protected:
    void SetUp() override {
        const std::string first = MakeFiles("first", {"a"});
        const std::string third = MakeFiles("third", {"b", "c"});
        WriteSettings({{22, first}, {24, third}, {33, first}, {35, third}});
        Start();
    }
    static void Press(std::int32_t n) { Own<BevelButton>("Fold" + Str(n))->ReportClick(); }
    static void ExpectPressed(std::int32_t number) {
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 99}) {
            EXPECT_EQ(Own<BevelButton>("Fold" + Str(n))->Value(), n == number) << n;
            EXPECT_EQ(Either(Console().mFold(n), Console().Fold(n))->Value(), n == 1) << "the other list's";
        }
    }
    using Files = std::vector<std::string>;
};

INSTANTIATE_TEST_SUITE_P(Of, FolderButtonsTest, ::testing::Bool(), TwinName);

TEST_P(FolderButtonsTest, APressListsItsFolderAndStaysDownAndOfSeveralTheLastCounts) {
    Press(3);
    ExpectPressed(3);
    Settle();
    EXPECT_EQ(Listed(), (Files{"b", "c"}));
    EXPECT_EQ(Names(Either(Console().mStrGrid(), Console().StrGrid())), Files{Either("a.wav", "a.mov")});
    MakeFiles("third", {"d"});
    Press(3); // down already: lists anew
    Settle();
    EXPECT_EQ(Count(), 3);
    for (const std::int32_t n : {3, 10, 1, 3, 1})
        Press(n);
    Settle();
    ExpectPressed(1);
    EXPECT_EQ(Listed(), Files{"a"});
    EXPECT_FALSE(Own<StaticText>("CountLabel")->Visible());
}

TEST_P(FolderButtonsTest, AFolderChosenOnTheSpotIsListedAndRemembered) {
    const std::string chosen = MakeFiles("chosen", {"x"});
    Press(99); // cancelled
    ExpectPressed(1);
    Windows().PrepareFolder(Folder().Path("chosen"));
    Press(99);
    Settle();
    ExpectPressed(99);
    EXPECT_EQ(Console().Setting_Data(Either(43, 44)), chosen);
    EXPECT_EQ(Console().Setting_Data(Either(44, 43)), Either("mSfolder", "Sfolder"));
    EXPECT_EQ(Own<BevelButton>("Fold99")->HelpTag(), chosen);
    EXPECT_EQ(Own<StaticText>("DirLabel")->Caption(), chosen);
    EXPECT_EQ(Listed(), Files{"x"});
}

} // namespace kirolane::tests
