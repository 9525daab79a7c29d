#include "contract/folderitem.h"

#include "backends/posix/posix_folders.h"
#include "contract/core/colon_path.h"
#include "contract/exceptions.h"
#include "support/as_user.h"
#include "support/captured_stderr.h"
#include "support/contract_test.h"
#include "support/test_form.h"

#include <filesystem>

#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace kirolane {
namespace {

using tests::CapturedStderr;

class FolderItemTest : public tests::ContractTest {
protected:
    /// The colon path of a name in the temporary folder.
    [[nodiscard]] std::string Colon(const std::string& name, bool folder = false) const {
        return ToColonPath(Folder().Path(name), folder);
    }
    static std::vector<std::string> Names(const Ref<FolderItem>& folder) {
        std::vector<std::string> names;
        for (std::int32_t i = 1; i <= folder->Count(); ++i)
            names.push_back(folder->Item(i)->Name());
        return names;
    }
};

TEST(ColonPaths, GoBothWays) {
    const struct {
        const char* native;
        bool folder;
        const char* colon;
    } cases[] = {
        {"/", true, "Root:"},
        {"/home/kiro", true, "Root:home:kiro:"},
        {"/home/映画/第1話.mov", false, "Root:home:映画:第1話.mov"},
        {"/a/12:30 rehearsal", true, "Root:a:12/30 rehearsal:"},
        {"/a/ends with:", false, "Root:a:ends with/"},
        {"/caf\xE9/line\nbreak ", false, "Root:caf\xE9:line\nbreak "},
    };
    for (const auto& [native, folder, colon] : cases) {
        EXPECT_EQ(ToColonPath(native, folder), colon);
        EXPECT_EQ(ToNativePath(colon, "/base"), native);
    }
}

TEST(ColonPaths, OfAnotherFormAreRelativeAndOddElementsLeadNowhere) {
    EXPECT_EQ(ToNativePath("clips:a.mov", "/base"), "/base/clips/a.mov");
    EXPECT_EQ(ToNativePath("clips", "/"), "/clips");
    EXPECT_EQ(ToNativePath("Rooter:a", "/base"), "/base/Rooter/a");
    EXPECT_EQ(ToNativePath("Root::a::b:", "/base"), "/a/b");
    using namespace std::string_view_literals;
    for (const auto path : {"Root:a:..:b"sv, ".."sv, "Root:.:"sv, "Root:a\0b"sv})
        EXPECT_EQ(ToNativePath(path, "/base"), "") << path;
}

TEST_F(FolderItemTest, APathWhoseLastElementIsMissingGivesAnItem) {
    const auto item = GetFolderItem(Colon("home") + ":new.mov");
    ASSERT_FALSE(item.IsNil());
    EXPECT_EQ(item->Name(), "new.mov");
    EXPECT_FALSE(item->Directory());
    EXPECT_EQ(item->AbsolutePath(), Colon("home") + ":new.mov");
}

TEST_F(FolderItemTest, APathWithAMissingFolderGivesNil) {
    Folder().Write("home/file", "");
    for (const std::string& path :
         {Colon("home/gone/new.mov"), Colon("home/gone", true), Colon("home/file", true),
          Colon("home/file/x"), Colon("home") + ":..:application:"})
        EXPECT_TRUE(GetFolderItem(path).IsNil()) << path;
}

TEST_F(FolderItemTest, NoPathIsTheApplicationsFolderAndOthersAreRelativeToIt) {
    Folder().MakeFolder("application/clips");
    EXPECT_EQ(GetFolderItem("")->AbsolutePath(), Colon("application", true));
    EXPECT_EQ(GetFolderItem("clips:")->AbsolutePath(), Colon("application/clips", true));
}

TEST_F(FolderItemTest, TheDesktopIsInTheHomeFolderWhetherOrNotItExists) {
    EXPECT_EQ(DesktopFolder()->AbsolutePath(), Colon("home/Desktop"));
    Folder().MakeFolder("home/Desktop");
    EXPECT_EQ(DesktopFolder()->AbsolutePath(), Colon("home/Desktop", true));
    EXPECT_FALSE(GetFolderItem(Colon("home/Library/Application Support", true)).IsNil());
}

TEST_F(FolderItemTest, TheHomeFolderIsNamedWithoutDots) {
    const std::string before = posix::HomeFolder();
    Folder().MakeFolder("home/x");
    for (const char* given : {"home/x/..", "home/./", "other/../home"}) {
        ::setenv("HOME", Folder().Path(given).c_str(), 1);
        EXPECT_EQ(posix::HomeFolder(), Folder().Path("home")) << given;
    }
    ::setenv("HOME", before.c_str(), 1);
}

TEST_F(FolderItemTest, ItemsStandInOrderWithoutCompanionFiles) {
    Folder().MakeFolder("clips");
    for (const char* name :
         {"clip 10.mov", "Clip 2.mov", "._clip 2.mov", ".hidden.mov", "a:b.mov", "caf\xE9.mov"})
        Folder().Write(std::string("clips/") + name, "");
    Folder().MakeFolder("clips/folder.mov");
    const auto folder = GetFolderItem(Colon("clips", true));
    EXPECT_EQ(Names(folder), (std::vector<std::string>{".hidden.mov", "a/b.mov", "caf\xE9.mov", "Clip 2.mov",
                                                       "clip 10.mov", "folder.mov"}));
    EXPECT_TRUE(folder->Item(6)->Directory());
    EXPECT_FALSE(folder->Item(1)->Directory());
    EXPECT_TRUE(folder->Item(0).IsNil());
    EXPECT_TRUE(folder->Item(7).IsNil());
    for (std::int32_t i = 1; i <= 6; ++i) { // every name leads back to its file
        const auto child = GetFolderItem(folder->AbsolutePath())->Child(folder->Item(i)->Name());
        EXPECT_EQ(child->AbsolutePath(), folder->Item(i)->AbsolutePath());
        EXPECT_TRUE(std::filesystem::exists(child->NativePath())) << child->NativePath();
    }
}

TEST_F(FolderItemTest, LinksCountAsWhatTheyLeadTo) {
    Folder().MakeFolder("clips");
    std::filesystem::create_symlink(Folder().Path("home"), Folder().Path("clips/a"));
    std::filesystem::create_symlink(Folder().Path("nowhere"), Folder().Path("clips/b"));
    const auto folder = GetFolderItem(Colon("clips", true));
    ASSERT_EQ(folder->Count(), 2);
    EXPECT_TRUE(folder->Item(1)->Directory());
    EXPECT_FALSE(folder->Item(2)->Directory());
}

TEST_F(FolderItemTest, AFileIsNoFolderWhateverItIsAsked) {
    const auto file = Ref(std::make_shared<FolderItem>(Folder().Write("clip.mov", "x")));
    EXPECT_EQ(file->Count(), 0);
    EXPECT_FALSE(file->Directory());
    Folder().MakeFolder("clips");
    Folder().Write("clips/clip.mov", "x");
    EXPECT_TRUE(GetFolderItem(Colon("clips", true))->Item(1)->Child("x").IsNil());
}

TEST_F(FolderItemTest, OnlyReadableRegularFilesOpenAsMovies) {
    CapturedStderr captured;
    const auto opens = [&](const std::string& name) {
        return !FolderItem(Folder().Path(name)).OpenAsMovie().IsNil();
    };
    Folder().Write("caf\xE9.mov", "x");
    Folder().MakeFolder("folder.mov");
    ASSERT_EQ(::mkfifo(Folder().Path("fifo.mov").c_str(), 0600), 0);
    EXPECT_TRUE(opens("caf\xE9.mov"));
    EXPECT_FALSE(opens("gone.mov"));
    EXPECT_FALSE(opens("folder.mov"));
    EXPECT_FALSE(opens("fifo.mov")) << "and it did not wait for a writer";
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "kirolane: " + Folder().Path("gone.mov") + ": No such file or directory");
    EXPECT_EQ(lines[2], "kirolane: " + Folder().Path("fifo.mov") + ": Is a FIFO");
}

TEST_F(FolderItemTest, ThatAFileDoesNotOpenIsSaidOnceAHandler) {
    StartWith<tests::ConsoleForm>();
    CapturedStderr captured;
    for (int handler = 0; handler < 2; ++handler)
        Do([this] {
            for (int twin = 0; twin < 2; ++twin)
                EXPECT_TRUE(FolderItem(Folder().Path("gone.mov")).OpenAsMovie().IsNil());
        });
    EXPECT_EQ(captured.Lines().size(), 2U);
}

TEST_F(FolderItemTest, WithoutPermissionNothingOpensAndNothingIsLost) {
    Folder().Write("closed.mov", "old");
    Folder().MakeFolder("closed");
    Folder().MakeFolder("locked");
    ::chmod(Folder().Path().c_str(), 0755);
    ::chmod(Folder().Path("closed.mov").c_str(), 0);
    ::chmod(Folder().Path("closed").c_str(), 0);
    ::chmod(Folder().Path("locked").c_str(), 0555);
    tests::RunAsOrdinaryUser([&] {
        CapturedStderr captured;
        EXPECT_TRUE(FolderItem(Folder().Path("closed.mov")).OpenAsMovie().IsNil());
        EXPECT_TRUE(FolderItem(Folder().Path("closed.mov")).OpenAsTextFile().IsNil());
        EXPECT_TRUE(FolderItem(Folder().Path("closed.mov")).CreateTextFile().IsNil());
        EXPECT_TRUE(FolderItem(Folder().Path("locked/new")).CreateTextFile().IsNil());
        EXPECT_EQ(FolderItem(Folder().Path("closed")).Count(), 0);
        EXPECT_TRUE(FolderItem(Folder().Path("closed")).Directory());
        FolderItem(Folder().Path("locked/folder")).CreateAsFolder();
        EXPECT_EQ(captured.Lines(), std::vector<std::string>{"kirolane: " + Folder().Path("closed.mov") +
                                                             ": Permission denied"});
        posix::PosixFileSystem files(Folder().Path("locked"), Folder().Path());
        EXPECT_EQ(files.Prepare(), Folder().Path("locked/Library") + ": Permission denied");
    });
    EXPECT_FALSE(std::filesystem::exists(Folder().Path("locked/folder")));
    EXPECT_EQ(Folder().Read("closed.mov"), ::geteuid() == 0 ? "old" : "");
}

TEST_F(FolderItemTest, TextIsReadByLinesWithEitherEnding) {
    Folder().Write("text", "first\r\n\nthird \xFF\nlast");
    const auto stream = FolderItem(Folder().Path("text")).OpenAsTextFile();
    EXPECT_EQ(stream->ReadLine(), "first");
    EXPECT_EQ(stream->ReadLine(), "");
    EXPECT_EQ(stream->ReadLine(), "third \xFF");
    EXPECT_EQ(stream->ReadLine(), "last");
    EXPECT_EQ(stream->ReadLine(), "");
    EXPECT_EQ(stream->ReadLine(), "");
    EXPECT_TRUE(FolderItem(Folder().Path("gone")).OpenAsTextFile().IsNil());
    EXPECT_TRUE(FolderItem(Folder().Path("home")).OpenAsTextFile().IsNil());
}

TEST_F(FolderItemTest, TextIsWrittenInOnePieceByClose) {
    Folder().Write("text", "the old content, which is longer\n");
    const auto stream = FolderItem(Folder().Path("text")).CreateTextFile();
    stream->WriteLine("映画");
    stream->WriteLine("");
    EXPECT_EQ(Folder().Read("text"), "the old content, which is longer\n");
    stream->Close();
    EXPECT_EQ(Folder().Read("text"), "映画\n\n");
    stream->WriteLine("late");
    stream->Close();
    EXPECT_EQ(Folder().Read("text"), "映画\n\n");

    { // a stream that is let go unclosed leaves the file
        const auto forgotten = FolderItem(Folder().Path("text")).CreateTextFile();
        forgotten->WriteLine("lost");
    }
    EXPECT_EQ(Folder().Read("text"), "映画\n\n");
}

TEST_F(FolderItemTest, AWriteThatFailsIsRaisedByCloseAndNamesTheFile) {
    struct FullDisk : TextSink {
        std::string Write(std::string_view) override { return "No space left on device"; }
        const std::string& Path() const override { return path; }
        std::string path = "/settings";
    };
    try {
        TextOutputStream(std::make_unique<FullDisk>()).Close();
        FAIL();
    } catch (const FileWriteException& e) {
        EXPECT_STREQ(e.what(), "FileWriteException: /settings: No space left on device");
    }
}

} // namespace
} // namespace kirolane
