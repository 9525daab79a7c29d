// Folders read by a worker while a thread waits.

#include "contract/core/colon_path.h"
#include "contract/folder_reading.h"
#include "contract/thread.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/console_test.h"

#include <filesystem>

namespace kirolane::tests {

using Names = std::vector<std::string>;

class FolderReadingTest : public ConsoleTest {
protected:
    FolderReadingTest() {
        Folder().MakeFolder("clips/sub.mov");
        for (const char* name : {"clips/b.mov", "clips/A.mov", "clips/._A.mov", "clips/caf\xE9.mov"})
            Folder().Write(name, "");
    }

    Thread& First() { return Get<Thread>("First"); }
    [[nodiscard]] std::string Clips() const { return ToColonPath(Folder().Path("clips"), true); }
    void RunScan(const std::string& path) {
        First().OnRun = [this, path] { return Scan(path); };
        Do([this] { First().Run(); });
    }
    /// The same of a mount that does not answer, until it has been asked so many times.
    void RunSilentScan(int asked = 1) {
        Files().SilentFolders();
        RunScan(Clips());
        Windows().RunReady();
        ASSERT_TRUE(Files().WaitForQuestions(asked));
    }

    const Names m_all = {"read", "A.mov", "b.mov", "caf\xE9.mov", "sub.mov/", "end"};
    Names m_log;

private:
    /// Reads a folder and takes its items one a turn, each anew through its name.
    Task Scan(std::string path) {
        const FolderReading reading = co_await ReadFolder(path);
        m_log.emplace_back("read");
        const std::string current = reading.folder->AbsolutePath();
        for (std::int32_t i = 1; i <= reading.folder->Count(); ++i) {
            const auto file = GetFolderItem(current)->Child(reading.folder->Item(i)->Name());
            m_log.push_back(file->Name() + (file->Directory() ? "/" : ""));
            co_await Yield();
        }
        m_log.emplace_back("end");
    }
};

TEST_F(FolderReadingTest, TheFolderAnswersAsItWasReadUntilTheScanEnds) {
    First().OnRun = [&]() -> Task {
        {
            const FolderReading reading = co_await ReadFolder(Clips());
            std::filesystem::remove_all(Folder().Path("clips"));
            co_await Yield();
            EXPECT_EQ(GetFolderItem(Clips())->Count(), 4);
            EXPECT_TRUE(GetFolderItem(Clips())->Child("sub.mov")->Directory());
            EXPECT_FALSE(GetFolderItem(Clips())->Child("new.mov")->Directory());
        }
        EXPECT_TRUE(GetFolderItem(Clips()).IsNil());
        m_log.emplace_back("end");
    };
    First().Run();
    Settle();
    EXPECT_EQ(m_log, Names{"end"});
}

TEST_F(FolderReadingTest, AFolderThatMayNotBeReadIsEmptyWithOneLine) {
    std::filesystem::permissions(Folder().Path("clips"), std::filesystem::perms::none);
    RunAsOrdinaryUser(Folder().Path(), [&] {
        CapturedStderr captured;
        RunScan(Clips());
        Settle();
        EXPECT_EQ(m_log, (Names{"read", "end"}));
        EXPECT_EQ(captured.Lines(), Names{"kirolane: " + Folder().Path("clips") + ": Permission denied"});
    });
    std::filesystem::permissions(Folder().Path("clips"), std::filesystem::perms::owner_all);
}

TEST_F(FolderReadingTest, ASilentFolderHoldsUpNothingButItsOwnThread) {
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
    EXPECT_EQ(TheRuntime().Mail().WorkersUnderWay(), 1);
    EXPECT_EQ(m_log, Names{});
    Files().Answer();
    Settle();
    EXPECT_EQ(m_log, m_all);
    EXPECT_EQ(TheRuntime().Mail().WorkersUnderWay(), 0);
}

TEST_F(FolderReadingTest, AKilledScanLeavesTheResultUnusedAndTheNextReadsItsOwn) {
    RunSilentScan();
    First().Kill();
    RunSilentScan(2);
    Files().Answer(1);
    EXPECT_TRUE(Windows().RunUntil([this] { return TheRuntime().Mail().WorkersUnderWay() == 1; },
                                   std::chrono::seconds(10)));
    Windows().RunReady();
    EXPECT_EQ(m_log, Names{}) << "what was killed does not wake the next";
    Files().Answer();
    Settle();
    EXPECT_EQ(m_log, m_all);
}

TEST_F(FolderReadingTest, TheEndOfTheRuntimeLetsItsWorkersEnd) {
    RunSilentScan();
    Files().Answer();
    Restart(); // at once: the end of the runtime waits for the worker
}

} // namespace kirolane::tests
