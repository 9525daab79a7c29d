#include "contract/core/colon_path.h"
#include "logic_test.h"
#include "support/child_process.h"

#include <filesystem>

namespace kirolane::tests {

class SettingsFileTest : public LogicTest {
protected:
    void WriteText(const std::string& text) {
        static_cast<void>(Folder().MakeFolder("home/Library/Application Support/Kirolane/Setting"));
        static_cast<void>(Folder().Write(kSettings, text));
    }
};

TEST_F(SettingsFileTest, TheFirstStartWritesTheDefaultsAndTheNextReadsThem) {
    const std::string own = ToColonPath(Folder().Path("application"), true);
    std::string expected = "// DualDisplayMode\ntrue\nFullScreen\nfalse\n// WindowColor\nfalse\n"
                           "// Window Hide\nfalse\nnil\nnil\n// FreeSeek\n3\n// - Sound\n3\n"
                           "// FolderNumber\n1\n// - Sound\n1\nnil\nnil\n// Folder - URL\n";
    for (int n = 22; n <= 31; ++n)
        expected += own + "\n";
    expected += "***** Music *****\n";
    for (int n = 33; n <= 42; ++n)
        expected += own + "\n";
    expected += "Sfolder\nmSfolder\n";
    for (int n = 45; n <= 200; ++n)
        expected += "nil\n";

    SetScreens(2);
    Start();
    EXPECT_EQ(SettingsText(), expected);
    End();
    Start();
    EXPECT_EQ(Console().Setting_Data(1), "// DualDisplayMode");
    EXPECT_EQ(Console().Setting_Data(200), "nil");
    EXPECT_EQ(SettingsText(), expected);
}

TEST_F(SettingsFileTest, AnEmptyFirstLineGivesTheDefaultsInMemoryAloneAndAShortFileEmptyLines) {
    for (const std::string text : {"", "\nfalse\nx\ntrue\n", "\r\n", "x"}) {
        SCOPED_TRACE(text);
        const bool isShort = text == "x";
        WriteText(text);
        SetScreens(2);
        Start();
        EXPECT_EQ(Console().Setting_Data(1), isShort ? "x" : "// DualDisplayMode");
        EXPECT_EQ(Console().Setting_Data(2), isShort ? "" : "true");
        EXPECT_EQ(Console().Setting_Data(200), isShort ? "" : "nil");
        EXPECT_EQ(Console().FoldNumber, isShort ? 0 : 1);
        EXPECT_EQ(Monitor().FullScreen(), !isShort) << "no placement";
        EXPECT_EQ(Monitor().Visible(), !isShort) << "a bad line 8 hides it";
        EXPECT_EQ(SettingsText(), text);
        End();
    }
}

TEST_F(SettingsFileTest, AFileThatIsNotThereOrMayNotBeReadFailsTheStartAndIsNamed) {
    WriteSettings({});
    const std::string file = Folder().Path(kSettings);
    std::filesystem::permissions(Folder().Path("home"), std::filesystem::perms::all);
    std::filesystem::permissions(file, std::filesystem::perms::none);
    RunAsOrdinaryUser(Folder().Path(), [&] { EXPECT_NE(StartFailure().find(file), std::string::npos); });
    std::filesystem::remove(file); // in a folder that is there: somebody's settings are gone
    EXPECT_NE(StartFailure().find(file), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(file)) << "it is not made anew";
}

} // namespace kirolane::tests
