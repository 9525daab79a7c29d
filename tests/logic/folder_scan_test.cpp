#include "logic_test.h"
#include "support/captured_stderr.h"

#include <string>
#include <thread>

namespace kirolane::tests {

class FolderScanTest : public LogicTest {
protected:
    /// A folder of `count` movies "1.mov", "2.mov" and so on.
    std::string MakeMovies(const std::string& folder, int count) {
        const std::string path = MakeMedia(folder, {});
        for (int n = 1; n <= count; ++n)
            static_cast<void>(Folder().Write(folder + "/" + std::to_string(n) + ".mov", ""));
        return path;
    }
    static std::string Counter() { return Console().FileNumberLabel()->Caption(); }
};

TEST_F(FolderScanTest, ListsTheFilesOfOneFolderByTheTailOfTheirNames) {
    StartWithMedia({"c10.mov", "A.MOV", "b.Mov", "c2.mov", "sub.mov/", "x.mpeg", "y.mpeg4", "z.m4b", "mov",
                    ".mov", "._d.mov", "n.txt", "日本語.mp4", "\xFF.qt", "ab.wav", "both.asf", "x.ＭＯＶ"},
                   {"both.asf", "e.mid", "e.midi", "f.aifc", ".au", "g.mov"});
    EXPECT_EQ(Names(Console().StrGrid()),
              (std::vector<std::string>{".mov", "A.MOV", "b.Mov", "both.asf", "c2.mov", "c10.mov", "x.mpeg",
                                        "日本語.mp4", "\xFF.qt"}));
    EXPECT_EQ(Names(Console().mStrGrid()), (std::vector<std::string>{".au", "both.asf", "e.mid", "f.aifc"}));
    EXPECT_EQ(Console().File_Count, 9);
    EXPECT_EQ(Console().mFile_Count, 4);
    EXPECT_EQ(Counter(), "9");
    EXPECT_EQ(Console().mFileNumberLabel()->Caption(), "4");
    EXPECT_EQ(Console().StrGrid()->ListCount(), 26);
    EXPECT_FALSE(Console().CountLabel()->Visible());
    EXPECT_EQ(Console().DirLabel()->Caption(), Console().Setting_Data(22));
    EXPECT_EQ(Console().Current_Folder, Console().Setting_Data(22));
    EXPECT_TRUE(Console().Fold_Flag);
    EXPECT_EQ(Console().StrGrid()->Cell(0, 0) + Console().StrGrid()->Cell(0, 2), "");
}

TEST_F(FolderScanTest, ShortListsAreFilledWithBlankRows) {
    Start();
    for (const int count : {1, 25, 26, 27, 60}) {
        Scan(MakeMovies("f" + std::to_string(count), count));
        EXPECT_EQ(Console().File_Count, count);
        EXPECT_EQ(Console().StrGrid()->ListCount(), std::max(count, 26));
        EXPECT_EQ(Counter(), std::to_string(count));
    }
}

TEST_F(FolderScanTest, AnEmptyFolderKeepsTheOldCountWhereOneWithoutMatchesCountsNone) {
    StartWithMedia({"a.mov", "b.mov"});
    Scan(MakeMedia("empty", {}));
    EXPECT_EQ(Console().File_Count, 2);
    EXPECT_EQ(Counter(), "2");
    EXPECT_EQ(Names(Console().StrGrid()).size(), 0U);
    EXPECT_EQ(Console().StrGrid()->ListCount(), 26);

    Scan(MakeMedia("other", {"n.txt", "m.txt"}));
    EXPECT_EQ(Console().File_Count, 0);
    EXPECT_EQ(Counter(), "0");
    EXPECT_EQ(Console().StrGrid()->ListCount(), 26);
}

TEST_F(FolderScanTest, TheSelectionComesAtTheItemAfterTheCountHasRisen) {
    StartWithMedia({"a.mov"});
    EXPECT_EQ(Console().StrGrid()->ListIndex(), -1) << "the count was 0 when the one item was looked at";
    Scan(MakeMedia("two", {"a.mov", "n.txt"}));
    EXPECT_EQ(Console().StrGrid()->ListIndex(), 0);
    Do([] { Console().StrGrid()->SetListIndex(1); });
    Scan(MakeMedia("later", {"a.txt", "b.mov"})); // nothing to select yet when the first item asks for it
    EXPECT_EQ(Console().StrGrid()->ListIndex(), -1);
}

TEST_F(FolderScanTest, TheEndMovesTheFocusToTheListScanned) {
    StartWithMedia({"a.mov"}, {"b.wav"});
    Do([] { Console().mStrGrid()->SetFocus(); });
    Scan(Console().Setting_Data(22));
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
}

TEST_F(FolderScanTest, AVanishedFolderEndsThatScanAloneAndTheListGoesOnPlaying) {
    StartWithMedia({"a.mov"}, {"b.wav"});
    CapturedStderr captured;
    Console().Setting_Data.Set(33, "Root:not:there:");
    Console().mFold(1)->ReportClick();
    Scan("Root:not:there:");
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 2U);
    for (const auto& line : lines)
        EXPECT_NE(line.find("NilObjectException (Root:not:there:: "), std::string::npos) << line;
    EXPECT_FALSE(Console().FolderThread()->Running());
    Open(0);
    OpenSound(0);
    EXPECT_TRUE(Console().QTM()->Running());
    EXPECT_TRUE(Sound().QTM()->Running());
    EXPECT_EQ(Marked(Console().StrGrid()), std::vector<std::int32_t>{0});

    // Also where it cuts another scan short, wherever that stands.
    const std::string many = MakeMovies("many", 40);
    const auto scanFor = [&](int turns) {
        Console().Setting_Data.Set(22, many);
        Console().Fold(1)->ReportClick();
        for (TheRuntime().Threads().OneTurnEach();
             TheRuntime().Mail().WorkersUnderWay();) // it reads the folder
            std::this_thread::yield();
        TheRuntime().RunPosted();
        for (int turn = 0; turn < turns; ++turn)
            TheRuntime().Threads().OneTurnEach();
        Scan("Root:not:there:");
        EXPECT_FALSE(Console().CountLabel()->Visible());
        EXPECT_EQ(Console().folder->AbsolutePath(), Console().Current_Folder);
        Open(0);
        EXPECT_TRUE(Console().QTM()->Running());
    };
    scanFor(10); // the rows of the list before still stand
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"a.mov"});
    scanFor(100010);
    EXPECT_EQ(Names(Console().StrGrid()).front(), "1.mov");
}

TEST_F(FolderScanTest, ARescanClearsTheMarkWhileTheMoviePlaysOn) {
    StartWithMedia({"a.mov", "b.mov"});
    Open(1);
    EXPECT_EQ(Counter(), "2 / 2");
    Scan(Console().Setting_Data(22));
    EXPECT_TRUE(Marked(Console().StrGrid()).empty());
    EXPECT_EQ(Counter(), "2");
    EXPECT_TRUE(Console().Fold_Flag);
    EXPECT_TRUE(Console().QTM()->Running());
    EXPECT_TRUE(Console().Play_Flag);
}

TEST_F(FolderScanTest, ARowMayBeOpenedDuringTheScan) {
    Start();
    const std::string movies = MakeMovies("many", 40);
    ScanUntil(movies, 5);
    EXPECT_TRUE(Console().CountLabel()->Visible());
    Open(2);
    EXPECT_FALSE(Console().QTM()->Movie().IsNil());
    EXPECT_FALSE(Console().Fold_Flag);
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()).size(), 40U);
    EXPECT_EQ(Counter(), "3 / 40");
    EXPECT_EQ(Marked(Console().StrGrid()), std::vector<std::int32_t>{2});
    EXPECT_FALSE(Console().CountLabel()->Visible());
}

TEST_F(FolderScanTest, ARowClosedAgainOrOfAnotherFolderDoesNotCount) {
    StartWithMedia({"a.mov"});
    Open(0);
    const std::string movies = MakeMovies("many", 30);
    ScanUntil(movies, 3);
    Do([] { Console().Fold_Flag = false; });
    Settle();
    EXPECT_EQ(Counter(), "30");
    ScanUntil(movies, 3);
    Open(2);
    Choose("CloseKey");
    Settle();
    EXPECT_EQ(Counter(), "30");
}

TEST(FolderLimitTest, MoreItemsThanTheBuffersHoldEndTheScan) {
    /// Every folder holds 100,000 movies.
    class FullFileSystem : public posix::PosixFileSystem {
    public:
        using PosixFileSystem::PosixFileSystem;
        bool ReadFolder(const std::string& /*path*/, const FolderVisitor& visit,
                        std::string& /*cause*/) const override {
            for (int n = 1; n <= 100000; ++n)
                visit(std::to_string(n) + ".mov", false);
            return true;
        }
    };
    const TemporaryFolder folder;
    FullFileSystem files(folder.MakeFolder("home"), folder.MakeFolder("application"));
    ASSERT_EQ(files.Prepare(), "");
    headless::Headless headless;
    Runtime runtime(headless.windows, headless.media, files);
    CapturedStderr captured;
    std::unique_ptr<App> app;
    std::string failure;
    ASSERT_TRUE(runtime.Start([&] { app = StartKirolane(); }, failure)) << failure;
    ASSERT_TRUE(headless.windows.RunUntilIdle());

    EXPECT_EQ(Instance<Mainform>()->File_Count, 99999);
    EXPECT_EQ(Instance<Mainform>()->StrGrid()->ListCount(), 99999);
    EXPECT_FALSE(Instance<Mainform>()->FolderThread()->Running());
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 2U) << "one a list";
    EXPECT_NE(lines[0].find("OutOfBoundsException"), std::string::npos);
}

} // namespace kirolane::tests
