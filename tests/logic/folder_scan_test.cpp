#include "support/captured_stderr.h"
#include "twin_test.h"

#include <filesystem>
#include <string>
#include <thread>
#include <tuple>

namespace kirolane::tests {

class FolderScanTest : public TwinTest {
protected:
    static Ref<StaticText> Counting() { return Own<StaticText>("CountLabel"); }
    static bool Filled() { return Either(Console().Fold_Flag, Console().mFold_Flag); }
};

INSTANTIATE_TEST_SUITE_P(Of, FolderScanTest, ::testing::Bool(), TwinName);

TEST_P(FolderScanTest, ListsTheFilesOfOneFolderByTheTailOfTheirNames) {
    const std::string media = MakeMedia(
        "media", {"c10.mov",  "A.MOV",  "b.Mov",   "c2.mov", "sub.mov/",   "x.mpeg",  "y.mpeg4", "z.m4b",
                  "mov",      ".mov",   "._d.mov", "n.txt",  "日本語.mp4", "\xFF.qt", "q.aif",   "both.asf",
                  "x.ＭＯＶ", "v.DivX", "e.mid",   "e.midi", "f.aifc",     ".au",     "W.WAV"});
    WriteSettings({{22, media}, {33, media}});
    Start();
    const std::vector<std::string> movies = {".mov",    "A.MOV",  "b.Mov",  "both.asf",   "c2.mov",
                                             "c10.mov", "v.DivX", "x.mpeg", "日本語.mp4", "\xFF.qt"};
    const std::vector<std::string> sounds = {".au", "both.asf", "e.mid", "f.aifc", "q.aif", "W.WAV"};
    EXPECT_EQ(Names(List()), Either(movies, sounds));
    EXPECT_EQ(Count(), Either(10, 6));
    EXPECT_EQ(Counter(), Either("10", "6"));
    EXPECT_FALSE(Counting()->Visible());
    EXPECT_EQ(Own<StaticText>("DirLabel")->Caption(), media);
    EXPECT_EQ(Either(Console().Current_Folder, Console().mCurrent_Folder), media);
    EXPECT_TRUE(Filled());
    EXPECT_EQ(List()->Cell(0, 0) + List()->Cell(0, 2), "");
    const std::pair<const char*, const char*> types[] = {{Either("open 6", "open 2"), Either("DivX", "MIDI")},
                                                         {Either("open 3", "open 1"), Either("ASF", "")}};
    for (const auto& [act, type] : types) {
        Act(act);
        EXPECT_EQ(Text("MediaType"), type);
    }
}

TEST_P(FolderScanTest, ShortListsAreFilledWithBlankRows) {
    StartWithFiles({});
    const std::tuple<std::string, std::size_t, std::int32_t, std::int32_t> rows[] = {
        {MakeMany("f1", 1), 1, 1, Either(0, -1)}, // selected at the item after the count has risen
        {MakeMany("f25", 25), 25, 25, 0},
        {MakeMany("f26", 26), 26, 26, 0},
        {MakeMany("f60", 60), 60, 60, 0},
        {MakeFiles("empty", {}), 0, 60, -1}, // where nothing is looked at the count stays
        {MakeMedia("others", {"n.txt", "m.txt"}), 0, 0, -1},
        {MakeMedia("late", {"a.txt", Either("b.mov", "b.wav")}), 1, 1, -1}};
    for (const auto& [folder, matches, count, selected] : rows) {
        SCOPED_TRACE(folder);
        Do([] { Console().Rate()->SetFocus(); });
        Scan(folder);
        EXPECT_EQ(Listed().size(), matches);
        EXPECT_EQ(Count(), count);
        EXPECT_EQ(Counter(), std::to_string(count));
        EXPECT_EQ(List()->ListCount(), std::max<std::int32_t>(static_cast<std::int32_t>(matches), 26));
        EXPECT_EQ(List()->ListIndex(), selected);
        EXPECT_EQ(Console().FocusControl()->Name(), List()->Name());
    }
}

TEST_P(FolderScanTest, AVanishedFolderEndsThatScanAloneAndTheListGoesOnPlaying) {
    StartWithFiles({"a"});
    CapturedStderr captured;
    Scan("Root:not:there:");
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("NilObjectException (Root:not:there:: "), std::string::npos) << lines[0];
    Walk({{"open 0", "再生中 a 0 bar 0"}});
    EXPECT_EQ(Counter(), "1 / 1 ●0");

    // Also where it cuts another scan short, wherever that stands.
    const std::string many = MakeMany("many", 40);
    const auto scanFor = [&](int turns, const std::string& first) {
        BeginScan(many, IsSound());
        for (TheRuntime().Threads().OneTurnEach();
             TheRuntime().Mail().WorkersUnderWay();) // it reads the folder
            std::this_thread::yield();
        TheRuntime().RunPosted();
        for (int turn = 0; turn < turns; ++turn)
            TheRuntime().Threads().OneTurnEach();
        Scan("Root:not:there:");
        EXPECT_FALSE(Counting()->Visible());
        EXPECT_EQ(Either(Console().folder, Console().mfolder)->AbsolutePath(),
                  Either(Console().Current_Folder, Console().mCurrent_Folder));
        Act("open 0");
        EXPECT_EQ(State(), "再生中 " + first + " 0 bar 0");
    };
    scanFor(10, "a"); // the rows of the list before still stand
    scanFor(100010, "1");
}

TEST_P(FolderScanTest, ARowMayBeOpenedDuringTheScanAndARescanClearsTheMark) {
    Start();
    const std::string many = MakeMany("many", 40);
    ScanUntil(many, 5, IsSound());
    EXPECT_TRUE(Counting()->Visible());
    Act("open 2");
    EXPECT_FALSE(Filled());
    Settle();
    EXPECT_EQ(Listed().size(), 40U);
    EXPECT_EQ(Counter(), "3 / 40 ●2");
    EXPECT_FALSE(Counting()->Visible());
    Scan(many);
    EXPECT_EQ(Counter(), "40");
    EXPECT_TRUE(Filled());
    EXPECT_EQ(State(), "再生中 3 0 bar 0") << "it plays on";

    // A row that is closed again, or of another folder, does not count.
    ScanUntil(many, 3, IsSound());
    Act("open 2");
    Act("CloseKey");
    Settle();
    EXPECT_EQ(Counter(), "40");
    Act("open 2");
    ScanUntil(MakeMany("others", 30), 3, IsSound());
    Do([] { (IsSound() ? Console().mFold_Flag : Console().Fold_Flag) = false; });
    Settle();
    EXPECT_EQ(Counter(), "30");
}

TEST_P(FolderScanTest, AFileRemovedDuringTheScanIsListedAndFailsToOpen) {
    Start();
    ScanUntil(MakeMany("many", 30), 2, IsSound());
    std::filesystem::remove(Folder().Path(Either("many/21.mov", "many/21.wav")));
    Settle();
    EXPECT_EQ(Listed().size(), 30U);
    Walk({{"open 20", "closed"}, {"open 21", "再生中 22 0 bar 0"}});
    EXPECT_EQ(List()->Cell(20, 2), kFailed);
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
