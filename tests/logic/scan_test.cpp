#include "logic/lists/media_types.h"
#include "support/captured_stderr.h"
#include "support/document.h"
#include "twin_test.h"

#include <filesystem>
#include <span>
#include <thread>

namespace kirolane::tests {

class ScanTest : public TwinTest {
protected:
    static bool Counting() { return Own<StaticText>("CountLabel")->Visible(); }
    static bool& Filled() { return IsSound() ? Console().mFold_Flag : Console().Fold_Flag; }
    static std::int32_t Count() { return Either(Console().File_Count, Console().mFile_Count); }
    static std::string Current() { return Either(Console().Current_Folder, Console().mCurrent_Folder); }
};

INSTANTIATE_TEST_SUITE_P(Of, ScanTest, ::testing::Bool(), TwinName);

TEST(FormatsTest, TheDocumentTellsEveryExtension) {
    std::vector<std::vector<std::string>> types;
    for (const bool movies : {true, false})
        for (const MediaTypeRow& row : movies ? std::span<const MediaTypeRow>(kMovieTypes) : kSoundTypes)
            types.push_back(
                {std::string(row.extension), movies ? "movies" : "sounds", std::string(row.caption)});
    auto told = DocumentRows("formats.md", 4);
    for (auto& row : told)
        row.pop_back();
    EXPECT_EQ(told, types);
}

TEST_P(ScanTest, ListsTheFilesOfOneFolderByTheTailOfTheirNames) {
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
    EXPECT_EQ(Shown("list"), Either("10", "6"));
    EXPECT_FALSE(Counting());
    EXPECT_EQ(Own<StaticText>("DirLabel")->Caption(), media);
    EXPECT_EQ(Current(), media);
    EXPECT_TRUE(Filled());
    EXPECT_EQ(List()->Cell(0, 0) + List()->Cell(0, 2), "");
    Act(Either("open 6", "open 2"));
    EXPECT_EQ(Shown("type"), Either("DivX", "MIDI"));
    Act(Either("open 3", "open 1"));
    EXPECT_EQ(Shown("type"), Either("ASF", ""));
}

TEST_P(ScanTest, ShortListsAreFilledWithBlankRows) {
    StartWithFiles({});
    const std::tuple<std::string, std::size_t, std::int32_t, std::int32_t> rows[] = {
        {MakeMany("f1", 1), 1, 1, Either(0, -1)}, // selected at the item after the count has risen
        {MakeMany("f25", 25), 25, 25, 0},
        {MakeMany("f26", 26), 26, 26, 0},
        {MakeFiles("empty", {}), 0, 26, -1}, // where nothing is looked at the count stays
        {MakeMedia("others", {"n.txt", "m.txt"}), 0, 0, -1},
        {MakeMedia("late", {"a.txt", Either("b.mov", "b.wav")}), 1, 1, -1}};
    for (const auto& [folder, matches, count, selected] : rows) {
        SCOPED_TRACE(folder);
        Do([] { Console().Rate()->SetFocus(); });
        Scan(folder);
        EXPECT_EQ(Listed().size(), matches);
        EXPECT_EQ(Count(), count);
        EXPECT_EQ(Shown("list"), std::to_string(count));
        EXPECT_EQ(List()->ListCount(), std::max<std::int32_t>(static_cast<std::int32_t>(matches), 26));
        EXPECT_EQ(List()->ListIndex(), selected);
        EXPECT_EQ(Console().FocusControl()->Name(), List()->Name());
    }
}

TEST_P(ScanTest, AVanishedFolderEndsThatScanAloneAndTheListGoesOnPlaying) {
    StartWithFiles({"a"});
    const std::string many = MakeMany("many", 40);
    // Alone, and where it cuts another scan short: while the rows of the list before still stand, or later.
    for (const auto& [turns, first] : {std::pair(-1, "a"), std::pair(10, "a"), std::pair(100010, "1")}) {
        if (turns >= 0) {
            BeginScan(many, IsSound());
            for (TheRuntime().Threads().OneTurnEach();
                 TheRuntime().Mail().WorkersUnderWay();) // it reads the folder
                std::this_thread::yield();
            TheRuntime().RunPosted();
            for (int turn = 0; turn < turns; ++turn)
                TheRuntime().Threads().OneTurnEach();
        }
        CapturedStderr captured;
        Scan("Root:not:there:");
        const auto lines = captured.Lines();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NE(lines[0].find("NilObjectException (Root:not:there:: "), std::string::npos) << lines[0];
        EXPECT_FALSE(Counting());
        EXPECT_EQ(Either(Console().folder, Console().mfolder)->AbsolutePath(), Current());
        Act("open 0");
        EXPECT_EQ(Shown("mode") + Shown("file"), std::string("再生中") + first);
    }
}

TEST_P(ScanTest, ARowMayBeOpenedAndAFileGoDuringTheScanAndARescanClearsTheMark) {
    Start();
    const std::string many = MakeMany("many", 40);
    ScanUntil(many, 5, IsSound());
    std::filesystem::remove(Folder().Path(Either("many/21.mov", "many/21.wav")));
    EXPECT_TRUE(Counting());
    Act("open 2");
    EXPECT_FALSE(Filled());
    Settle();
    EXPECT_EQ(Listed().size(), 40U);
    EXPECT_EQ(Shown("list"), "3 / 40 ●2");
    EXPECT_FALSE(Counting());
    Act("open 20");
    EXPECT_EQ(List()->Cell(20, 2), kFailed);
    Act("open 2");
    Scan(many);
    EXPECT_EQ(Shown("list"), "39");
    EXPECT_TRUE(Filled());
    EXPECT_EQ(Shown("mode") + Shown("file"), "再生中3") << "it plays on";

    // A row that is closed again, or of another folder, does not count.
    ScanUntil(many, 3, IsSound());
    Act("open 2; CloseKey");
    Settle();
    EXPECT_EQ(Shown("list"), "39");
    Act("open 2");
    ScanUntil(MakeMany("others", 30), 3, IsSound());
    Do([] { Filled() = false; });
    Settle();
    EXPECT_EQ(Shown("list"), "30");
}

TEST_P(ScanTest, MoreItemsThanTheBuffersHoldEndTheScan) {
    Start();
    Files().crowd = 100000;
    CapturedStderr captured;
    Scan(MakeMedia("full", {}));
    EXPECT_EQ(Count(), 99999);
    EXPECT_EQ(List()->ListCount(), 99999);
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("OutOfBoundsException"), std::string::npos) << lines[0];
}

} // namespace kirolane::tests
