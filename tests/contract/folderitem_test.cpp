#include "contract/folderitem.h"

#include "backends/posix/posix_folders.h"
#include "contract/core/colon_path.h"
#include "contract/exceptions.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/console_test.h"

#include <filesystem>
#include <tuple>

#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::tests {

using namespace std::string_view_literals;
using Lines = std::vector<std::string>;

class FolderItemTest : public ConsoleTest {
protected:
    /// The colon path of a name in the temporary folder.
    [[nodiscard]] std::string Colon(const std::string& name, bool folder = false) const {
        return ToColonPath(Folder().Path(name), folder);
    }
    [[nodiscard]] FolderItem At(const std::string& name) const { return FolderItem(Folder().Path(name)); }
};

TEST(ColonPaths, GoBothWaysAndOddElementsLeadNowhere) {
    const std::tuple<const char*, bool, const char*> ways[] = {
        {"/", true, "Root:"},
        {"/home/映画/第1話.mov", false, "Root:home:映画:第1話.mov"},
        {"/a/12:30 rehearsal", true, "Root:a:12/30 rehearsal:"},
        {"/a/ends with:", false, "Root:a:ends with/"},
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
    const std::string missing = Colon("home") + ":new.mov";
    EXPECT_EQ(GetFolderItem(missing)->Name(), "new.mov");
    const std::tuple<std::string, std::string> same[] = {
        {missing, missing},
        {"", Colon("application", true)},
        {"clips:", Colon("application/clips", true)},
    };
    for (const auto& [path, absolute] : same)
        EXPECT_EQ(GetFolderItem(path)->AbsolutePath(), absolute);
    for (const std::string& path :
         {Colon("home/gone/new.mov"), Colon("home/gone", true), Colon("home/file", true),
          Colon("home/file/x"), Colon("home") + ":..:application:"})
        EXPECT_TRUE(GetFolderItem(path).IsNil()) << path;
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

TEST_F(FolderItemTest, ItemsStandInOrderWithoutCompanionFilesAndLinksAreWhatTheyLeadTo) {
    Folder().MakeFolder("clips/folder.mov");
    for (const char* name :
         {"clip 10.mov", "Clip 2.mov", "._clip 2.mov", ".hidden.mov", "a:b.mov", "caf\xE9.mov"})
        Folder().Write(std::string("clips/") + name, "");
    std::filesystem::create_symlink(Folder().Path("home"), Folder().Path("clips/link"));
    std::filesystem::create_symlink(Folder().Path("nowhere"), Folder().Path("clips/lost"));
    const std::string names[] = {".hidden.mov", "a/b.mov",    "caf\xE9.mov", "Clip 2.mov",
                                 "clip 10.mov", "folder.mov", "link",        "lost"};
    const auto folder = GetFolderItem(Colon("clips", true));
    ASSERT_EQ(folder->Count(), 8);
    for (std::int32_t i = 1; i <= 8; ++i) {
        const auto item = folder->Item(i);
        EXPECT_EQ(item->Name(), names[i - 1]);
        EXPECT_EQ(item->Directory(), i == 6 || i == 7) << i;
        const auto child = GetFolderItem(folder->AbsolutePath())->Child(item->Name()); // back to its file
        EXPECT_EQ(child->AbsolutePath(), item->AbsolutePath());
        EXPECT_EQ(std::filesystem::exists(child->NativePath()), i != 8) << child->NativePath();
        EXPECT_EQ(item->Child("x").IsNil(), !item->Directory());
    }
    EXPECT_TRUE(folder->Item(0).IsNil());
    EXPECT_TRUE(folder->Item(9).IsNil());
    EXPECT_EQ(At("clips/a:b.mov").Count(), 0);
}

TEST_F(FolderItemTest, OnlyReadableRegularFilesOpenAsMoviesAndTwinsAreToldOnce) {
    CapturedStderr captured;
    Folder().Write("caf\xE9.mov", "x");
    Folder().MakeFolder("folder.mov");
    ASSERT_EQ(::mkfifo(Folder().Path("fifo.mov").c_str(), 0600), 0); // it must not wait for a writer
    const auto openTwice = [this](const std::string& name, bool opens) {
        for (int handler = 0; handler < 2; ++handler)
            Do([&] {
                for (int twin = 0; twin < 2; ++twin)
                    EXPECT_EQ(At(name).OpenAsMovie().IsNil(), !opens) << name;
            });
    };
    openTwice("caf\xE9.mov", true);
    Lines lines;
    for (const std::string name : {"gone", "folder", "fifo"}) {
        openTwice(name + ".mov", false);
        const char* cause = name == "gone"   ? "No such file or directory"
                            : name == "fifo" ? "Is a FIFO"
                                             : "Is a directory";
        lines.insert(lines.end(), 2, "kirolane: " + Folder().Path(name) + ".mov: " + cause);
    }
    EXPECT_EQ(captured.Lines(), lines) << "once a handler";
}

TEST_F(FolderItemTest, WithoutPermissionNothingOpensAndNothingIsLost) {
    ::chmod(Folder().Write("closed.mov", "old").c_str(), 0);
    ::chmod(Folder().MakeFolder("closed").c_str(), 0);
    ::chmod(Folder().MakeFolder("locked").c_str(), 0555);
    RunAsOrdinaryUser(Folder().Path(), [&] {
        CapturedStderr captured;
        EXPECT_TRUE(At("closed.mov").OpenAsMovie().IsNil());
        EXPECT_TRUE(At("closed.mov").OpenAsTextFile().IsNil());
        EXPECT_TRUE(At("closed.mov").CreateTextFile().IsNil());
        EXPECT_TRUE(At("locked/new").CreateTextFile().IsNil());
        EXPECT_EQ(At("closed").Count(), 0);
        EXPECT_TRUE(At("closed").Directory());
        At("locked/folder").CreateAsFolder();
        EXPECT_EQ(captured.Lines(),
                  Lines{"kirolane: " + Folder().Path("closed.mov") + ": Permission denied"});
        posix::PosixFileSystem files(Folder().Path("locked"), Folder().Path());
        EXPECT_EQ(files.Prepare(), Folder().Path("locked/Library") + ": Permission denied");
    });
    EXPECT_FALSE(std::filesystem::exists(Folder().Path("locked/folder")));
    EXPECT_EQ(Folder().Read("closed.mov"), ::geteuid() == 0 ? "old" : "");
}

TEST_F(FolderItemTest, TextIsReadByLinesWithEitherEnding) {
    Folder().Write("text", "first\r\n\nthird \xFF\nlast");
    const auto stream = At("text").OpenAsTextFile();
    for (const char* line : {"first", "", "third \xFF", "last", "", ""})
        EXPECT_EQ(stream->ReadLine(), line);
    EXPECT_TRUE(At("gone").OpenAsTextFile().IsNil());
    EXPECT_TRUE(At("home").OpenAsTextFile().IsNil());
}

TEST_F(FolderItemTest, TextIsWrittenInOnePieceByCloseWhichRaisesWhatFails) {
    const std::string old = "the old content, which is longer\n";
    Folder().Write("text", old);
    At("text").CreateTextFile()->WriteLine("lost: the stream is let go unclosed");
    const auto stream = At("text").CreateTextFile();
    stream->WriteLine("映画");
    stream->WriteLine("");
    EXPECT_EQ(Folder().Read("text"), old);
    stream->Close();
    stream->WriteLine("late");
    stream->Close();
    EXPECT_EQ(Folder().Read("text"), "映画\n\n");

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

} // namespace kirolane::tests
