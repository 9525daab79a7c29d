#include "contract/folderitem.h"

#include "contract/core/colon_path.h"
#include "contract/folder_reading.h"
#include "contract/thread.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/console_test.h"

#include <filesystem>
#include <tuple>

#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::tests {

using namespace std::string_view_literals;
class FolderItemTest : public ConsoleTest {
protected:
    [[nodiscard]] std::string Colon(const std::string& name, bool folder = false) const {
        return ToColonPath(Folder().Path(name), folder);
    }
    [[nodiscard]] FolderItem At(const std::string& name) const { return FolderItem(Folder().Path(name)); }
    [[nodiscard]] std::string Denied(const std::string& name) const {
        return Folder().Path(name) + ": Permission denied";
    }
};

TEST(ColonPaths, GoBothWaysAndOddElementsLeadNowhere) {
    const std::tuple<const char*, bool, const char*> ways[] = {
        {"/", true, "Root:"},
        {"/home/映画/第1話.mov", false, "Root:home:映画:第1話.mov"},
        {"/a/12:30 rehearsal", true, "Root:a:12/30 rehearsal:"},
        {"/caf\xE9/line\nbreak ", false, "Root:caf\xE9:line\nbreak "},
    };
    for (const auto& [native, folder, colon] : ways) {
        EXPECT_EQ(ToColonPath(native, folder), colon);
        EXPECT_EQ(ToNativePath(colon, "/base"), native);
    }
    EXPECT_EQ(ToNativePath("clips", "/"), "/clips");
    EXPECT_EQ(ToNativePath("Rooter:a", "/base"), "/base/Rooter/a");
    EXPECT_EQ(ToNativePath("Root::a::b:", "/base"), "/a/b");
    for (const auto path : {"Root:a:..:b"sv, ".."sv, "Root:.:"sv, "Root:a\0b"sv})
        EXPECT_EQ(ToNativePath(path, "/base"), "") << path;
}

TEST_F(FolderItemTest, APathGivesAnItemWhereTheFolderOfItsLastElementIsThere) {
    Folder().Write("home/file", "");
    Folder().MakeFolder("application/clips");
    const std::tuple<std::string, std::string> items[] = {
        {Colon("home") + ":new.mov", Colon("home/new.mov")},
        {"", Colon("application", true)},
        {"clips:", Colon("application/clips", true)},
    };
    for (const auto& [path, absolute] : items)
        EXPECT_EQ(GetFolderItem(path)->AbsolutePath(), absolute);
    for (const std::string& path :
         {Colon("home/gone/new.mov"), Colon("home/gone", true), Colon("home/file", true),
          Colon("home/file/x"), Colon("home") + ":..:application:"})
        EXPECT_TRUE(GetFolderItem(path).IsNil()) << path;
    EXPECT_EQ(DesktopFolder()->AbsolutePath(), Colon("home/Desktop"));
}

TEST_F(FolderItemTest, ItemsLeadBackToTheirFilesAndLinksAreWhatTheyLeadTo) {
    Folder().MakeFolder("clips/folder.mov");
    for (const char* name : {"clip 10.mov", "Clip 2.mov", "._clip 2.mov", "a:b.mov", "caf\xE9.mov"})
        Folder().Write(std::string("clips/") + name, "");
    std::filesystem::create_symlink(Folder().Path("home"), Folder().Path("clips/link"));
    std::filesystem::create_symlink(Folder().Path("nowhere"), Folder().Path("clips/lost"));
    const auto folder = GetFolderItem(Colon("clips", true));
    std::string items; // a folder with a slash, a file that is not there with a question mark
    for (std::int32_t i = 0; i <= folder->Count() + 1; ++i) {
        const auto item = folder->Item(i);
        if (item.IsNil())
            continue;
        const auto child = GetFolderItem(folder->AbsolutePath())->Child(item->Name());
        EXPECT_EQ(child->AbsolutePath(), item->AbsolutePath());
        EXPECT_EQ(item->Child("x").IsNil(), !item->Directory());
        items += item->Name() + (item->Directory() ? "/" : "") +
                 (std::filesystem::exists(child->NativePath()) ? "|" : "?|");
    }
    EXPECT_EQ(items, "a/b.mov|caf\xE9.mov|Clip 2.mov|clip 10.mov|folder.mov/|link/|lost?|");
    EXPECT_EQ(At("clips/a:b.mov").Count(), 0);
}

TEST_F(FolderItemTest, OnlyReadableRegularFilesOpenAsMoviesAndTwinsAreToldOnce) {
    CapturedStderr captured;
    Folder().Write("caf\xE9", "x");
    Folder().MakeFolder("folder");
    ASSERT_EQ(::mkfifo(Folder().Path("fifo").c_str(), 0600), 0); // it must not wait for a writer
    const std::pair<const char*, const char*> rows[] = {{"caf\xE9", nullptr},
                                                        {"gone", "No such file or directory"},
                                                        {"folder", "Is a directory"},
                                                        {"fifo", "Is a FIFO"}};
    Names lines;
    for (const auto& [name, cause] : rows)
        for (int handler = 0; handler < 2; ++handler) {
            Do([&, name = name, cause = cause] {
                for (int twin = 0; twin < 2; ++twin)
                    EXPECT_EQ(At(name).OpenAsMovie().IsNil(), cause != nullptr) << name;
            });
            if (cause != nullptr)
                lines.push_back("kirolane: " + Folder().Path(name) + ": " + cause);
        }
    EXPECT_EQ(captured.Lines(), lines) << "once a handler";
}

TEST_F(FolderItemTest, TextIsReadByLinesWithEitherEndingAndWrittenInOnePieceByClose) {
    Folder().Write("text", "first\r\n\nthird \xFF\nlast");
    const auto read = At("text").OpenAsTextFile();
    for (const char* line : {"first", "", "third \xFF", "last", "", ""})
        EXPECT_EQ(read->ReadLine(), line);
    EXPECT_TRUE(At("gone").OpenAsTextFile().IsNil());
    EXPECT_TRUE(At("home").OpenAsTextFile().IsNil());

    At("text").CreateTextFile()->WriteLine("lost: the stream is let go unclosed");
    const auto written = At("text").CreateTextFile();
    written->WriteLine("映画");
    written->WriteLine("");
    EXPECT_EQ(Folder().Read("text"), "first\r\n\nthird \xFF\nlast");
    written->Close();
    written->WriteLine("late");
    written->Close();
    EXPECT_EQ(Folder().Read("text"), "映画\n\n");
}

class FolderReadingTest : public FolderItemTest {
protected:
    FolderReadingTest() {
        Folder().MakeFolder("clips/sub.mov");
        for (const char* name : {"clips/b.mov", "clips/A.mov", "clips/._A.mov", "clips/caf\xE9.mov"})
            Folder().Write(name, "");
    }

    Thread& First() { return Get<Thread>("First"); }
    void RunScan(const std::string& folder) {
        First().OnRun = [this, path = Colon(folder, true)] { return Scan(path); };
        Do([this] { First().Run(); });
    }
    /// The same of a mount that does not answer, until it has been asked so many times.
    void RunSilentScan(int asked = 1) {
        Files().Answers().Close("/*");
        RunScan("clips");
        Windows().RunReady();
        ASSERT_TRUE(Files().Answers().Holds(asked));
    }

    const Names m_all = {"read", "A.mov", "b.mov", "caf\xE9.mov", "sub.mov/", "end"};
    Names m_log;

private:
    /// Reads a folder and takes its items one a turn, each anew through its name; the folder itself may go as
    /// soon as it has been read.
    Task Scan(std::string path) {
        const FolderReading reading = co_await ReadFolder(path);
        m_log.emplace_back("read");
        std::error_code denied;
        std::filesystem::remove_all(Folder().Path("clips"), denied);
        for (std::int32_t i = 1; i <= reading.folder->Count(); ++i) {
            const auto file = GetFolderItem(path)->Child(reading.folder->Item(i)->Name());
            m_log.push_back(file->Name() + (file->Directory() ? "/" : ""));
            co_await Yield();
        }
        m_log.emplace_back("end");
    }
};

TEST_F(FolderReadingTest, WithoutPermissionNothingOpensAndNothingIsLost) {
    ::chmod(Folder().Write("closed.mov", "old").c_str(), 0);
    ::chmod(Folder().MakeFolder("closed").c_str(), 0);
    ::chmod(Folder().MakeFolder("locked").c_str(), 0555);
    RunAsOrdinaryUser(Folder().Path(), [&] {
        CapturedStderr captured;
        EXPECT_TRUE(At("closed.mov").OpenAsMovie().IsNil());
        EXPECT_TRUE(At("closed.mov").OpenAsTextFile().IsNil());
        EXPECT_TRUE(At("closed.mov").CreateTextFile().IsNil());
        EXPECT_TRUE(At("locked/new").CreateTextFile().IsNil());
        At("locked/folder").CreateAsFolder();
        RunScan("closed");
        Settle();
        EXPECT_EQ(m_log, (Names{"read", "end"}));
        EXPECT_EQ(captured.Lines(),
                  (Names{"kirolane: " + Denied("closed.mov"), "kirolane: " + Denied("closed")}));
        posix::PosixFileSystem files(Folder().Path("locked"), Folder().Path());
        EXPECT_EQ(files.Prepare(), Denied("locked/Library"));
        std::string cause;
        EXPECT_FALSE(files.IsReadableFolder(Folder().Path("closed"), cause));
        EXPECT_TRUE(files.IsReadableFolder(Folder().Path("locked"), cause));
    });
    EXPECT_FALSE(std::filesystem::exists(Folder().Path("locked/folder")));
    EXPECT_EQ(Folder().Read("closed.mov"), ::geteuid() == 0 ? "old" : "");
}

TEST_F(FolderReadingTest, ASilentFolderHoldsUpNothingButItsOwnThreadAndAnswersAsItWasRead) {
    RunSilentScan();
    bool other = false;
    Get<Thread>("Second").OnRun = [&]() -> Task {
        co_await Yield();
        other = true;
    };
    Get<Thread>("Second").Run();
    Windows().RunReady();
    EXPECT_TRUE(other);
    EXPECT_FALSE(TheRuntime().RunIdleSlice()) << "a thread that waits makes no idle work";
    EXPECT_EQ(m_log, Names{});
    Files().Answers().Open();
    Settle();
    EXPECT_EQ(m_log, m_all);
    EXPECT_TRUE(GetFolderItem(Colon("clips", true)).IsNil()) << "the scan has ended";
    EXPECT_EQ(TheRuntime().Mail().WorkersUnderWay(), 0);
}

TEST_F(FolderReadingTest, AKilledScanLeavesTheResultUnusedAndTheNextReadsItsOwn) {
    RunSilentScan();
    First().Kill();
    RunSilentScan(2);
    Files().Answers().LetPass(1);
    EXPECT_TRUE(Windows().RunUntil([this] { return TheRuntime().Mail().WorkersUnderWay() == 1; },
                                   std::chrono::seconds(10)));
    Windows().RunReady();
    EXPECT_EQ(m_log, Names{}) << "what was killed does not wake the next";
    Files().Answers().Open();
    Settle();
    EXPECT_EQ(m_log, m_all);
}

TEST_F(FolderReadingTest, TheEndOfTheRuntimeLetsItsWorkersEnd) {
    RunSilentScan();
    Files().Answers().Open();
    Restart(); // at once: the end of the runtime waits for the worker
}

} // namespace kirolane::tests
