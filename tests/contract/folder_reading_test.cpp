// Folders read by a worker while a thread waits.

#include "contract/core/colon_path.h"
#include "contract/folder_reading.h"
#include "contract/thread.h"
#include "support/as_user.h"
#include "support/captured_stderr.h"
#include "support/contract_test.h"
#include "support/silent_mount.h"
#include "support/test_form.h"

#include <filesystem>

namespace kirolane {
namespace {

using tests::ConsoleForm;
using Names = std::vector<std::string>;

/// A body that reads a folder and takes its items one a turn, each anew through its name.
Task Scan(std::string path, Names& names, std::string& log) {
    const FolderReading reading = co_await ReadFolder(path);
    log += "read;";
    const std::string current = reading.folder->AbsolutePath();
    for (std::int32_t i = 1; i <= reading.folder->Count(); ++i) {
        const auto file = GetFolderItem(current)->Child(reading.folder->Item(i)->Name());
        names.push_back(file->Name() + (file->Directory() ? "/" : ""));
        co_await Yield();
    }
    log += "end;";
}

class FolderReadingTest : public tests::ContractTest {
protected:
    FolderReadingTest() : m_form(StartWith<ConsoleForm>()), m_clips(Folder().MakeFolder("clips")) {
        for (const char* name : {"clips/b.mov", "clips/A.mov", "clips/._A.mov", "clips/caf\xE9.mov"})
            Folder().Write(name, "");
        Folder().MakeFolder("clips/sub.mov");
    }

    Thread& First() { return *m_form->Control<Thread>("First"); }
    [[nodiscard]] std::string Clips() const { return ToColonPath(m_clips, true); }
    void RunScan(const std::string& path) {
        First().OnRun = [this, path] { return Scan(path, m_names, m_log); };
        Do([this] { First().Run(); });
    }
    [[nodiscard]] const Names& Read() const { return m_names; }
    std::string TakeLog() { return std::exchange(m_log, {}); }

private:
    Ref<ConsoleForm> m_form;
    std::string m_clips;
    Names m_names;
    std::string m_log;
};

TEST_F(FolderReadingTest, GivesNamesAndKindsInOrder) {
    RunScan(Clips());
    EXPECT_TRUE(First().Running());
    Settle();
    EXPECT_EQ(TakeLog(), "read;end;");
    EXPECT_EQ(Read(), (Names{"A.mov", "b.mov", "caf\xE9.mov", "sub.mov/"}));
}

TEST_F(FolderReadingTest, TheFolderAnswersAsItWasReadUntilTheScanEnds) {
    std::string seen;
    First().OnRun = [&]() -> Task {
        return [](std::string path, std::string native, std::string& record) -> Task {
            {
                const FolderReading reading = co_await ReadFolder(path);
                std::filesystem::remove_all(native);
                co_await Yield();
                record += std::to_string(GetFolderItem(path)->Count()) + ";";
                record += GetFolderItem(path)->Child("sub.mov")->Directory() ? "folder;" : "gone;";
                record += GetFolderItem(path)->Child("new.mov")->Directory() ? "folder;" : "no folder;";
            }
            record += GetFolderItem(path).IsNil() ? "nil" : "still there";
        }(Clips(), Folder().Path("clips"), seen);
    };
    First().Run();
    Settle();
    EXPECT_EQ(seen, "4;folder;no folder;nil");
}

TEST_F(FolderReadingTest, AFolderThatMayNotBeReadIsEmptyWithOneLine) {
    Folder().MakeFolder("closed");
    tests::OpenToAll(Folder().Path());
    std::filesystem::permissions(Folder().Path("closed"), std::filesystem::perms::none);
    tests::RunAsOrdinaryUser([&] {
        tests::CapturedStderr captured;
        RunScan(ToColonPath(Folder().Path("closed"), true));
        Settle();
        EXPECT_EQ(TakeLog(), "read;end;");
        EXPECT_TRUE(Read().empty());
        EXPECT_EQ(captured.Lines(), Names{"kirolane: " + Folder().Path("closed") + ": Permission denied"});
    });
    std::filesystem::permissions(Folder().Path("closed"), std::filesystem::perms::owner_all);
}

class SlowReadingTest : public ::testing::Test {
protected:
    SlowReadingTest()
        : m_files(m_folder.Path(), m_folder.Path()),
          m_runtime(m_headless.windows, m_headless.media, m_files) {
        std::string failure;
        EXPECT_TRUE(m_runtime.Start([] { Instance<ConsoleForm>(); }, failure));
        m_folder.Write("a.mov", "");
    }
    ~SlowReadingTest() override { m_files.Answer(); }

    void RunScan(const char* thread) {
        auto& control = *Instance<ConsoleForm>()->Control<Thread>(thread);
        control.OnRun = [this] { return Scan(ToColonPath(m_folder.Path(), true), m_names, m_log); };
        control.Run();
    }

    tests::TemporaryFolder m_folder;
    headless::Headless m_headless;
    tests::SilentMount m_files;
    Runtime m_runtime;
    Names m_names;
    std::string m_log;
};

TEST_F(SlowReadingTest, HoldsUpNothingButItsOwnThread) {
    RunScan("First");
    m_headless.windows.RunReady();
    ASSERT_TRUE(m_files.WaitForQuestions(1));
    bool other = false;
    auto& second = *Instance<ConsoleForm>()->Control<Thread>("Second");
    second.OnRun = [&]() -> Task {
        return [](bool& done) -> Task {
            co_await Yield();
            done = true;
        }(other);
    };
    second.Run();
    m_headless.windows.RunReady();
    EXPECT_TRUE(other);
    EXPECT_FALSE(m_runtime.RunIdleSlice()) << "a thread that waits makes no idle work";
    EXPECT_TRUE(m_runtime.Mail().WorkersUnderWay());
    EXPECT_EQ(m_log, "");
    m_files.Answer();
    EXPECT_TRUE(m_headless.windows.RunUntilIdle());
    EXPECT_EQ(m_log, "read;end;");
    EXPECT_FALSE(m_runtime.Mail().WorkersUnderWay());
}

TEST_F(SlowReadingTest, AKilledScanLeavesTheResultUnusedAndTheNextReadsItsOwn) {
    RunScan("First");
    m_headless.windows.RunReady();
    ASSERT_TRUE(m_files.WaitForQuestions(1));
    Instance<ConsoleForm>()->Control<Thread>("First")->Kill();
    RunScan("First");
    m_headless.windows.RunReady();
    ASSERT_TRUE(m_files.WaitForQuestions(2));
    m_files.Answer();
    EXPECT_TRUE(m_headless.windows.RunUntilIdle());
    EXPECT_EQ(m_log, "read;end;");
    EXPECT_EQ(m_names, Names{"a.mov"});
}

TEST_F(SlowReadingTest, TheEndOfTheRuntimeLetsItsWorkersEnd) {
    RunScan("First");
    m_headless.windows.RunReady();
    ASSERT_TRUE(m_files.WaitForQuestions(1));
    m_files.Answer(); // and at once goes the runtime, whose end waits for the worker
}

} // namespace
} // namespace kirolane
