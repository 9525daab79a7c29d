#include "contract/core/colon_path.h"
#include "logic/about/verform.h"
#include "logic_test.h"
#include "support/captured_stderr.h"

#include <sys/stat.h>

namespace kirolane::tests {

class StartTest : public LogicTest {};

TEST_F(StartTest, StandsIdleWithTheCurtainUpAndTheConsoleInFront) {
    SetScreens(2);
    Windows().UseDesktop();
    Start();
    const Mainform& console = Console();
    EXPECT_EQ(Windows().ActiveWindow(), "Mainform");
    EXPECT_TRUE(console.Visible() && Monitor().Visible());
    EXPECT_FALSE(Sound().Visible() || Instance<SettingForm>()->Visible() || Instance<VerForm>()->Visible());
    EXPECT_EQ(console.Volume_Flag, 80);
    EXPECT_EQ(console.mVolume_Flag, 80);
    for (const auto& list : {console.StrGrid(), console.mStrGrid()}) {
        EXPECT_EQ(list->ListCount(), 26);
        EXPECT_EQ(list->Heading(0) + list->Heading(1) + list->Heading(2), " ファイル名時間");
    }
    ExpectWhole();
}

TEST_F(StartTest, LinesChooseFirstScansColourAndFolders) {
    const std::tuple<const char*, std::int32_t, const char*, bool> cases[] = {
        // with 0 no button is down
        {"1", 1, "true", true}, {"10", 10, "TRUE", true}, {"0", 0, "false", false},
        {"11", 0, "", false},   {"", 0, "1", false},      {"01", 0, "false", false}};
    const std::string media = MakeFiles("media", {"a"});
    const std::string own = ToColonPath(Folder().Path("application"), true);
    for (const auto& [number, folder, colour, flat] : cases) {
        SCOPED_TRACE(std::string(number) + colour);
        Lines lines = {{6, colour}, {16, number}, {18, number}};
        for (const int first : {22, 33})
            lines.insert({{first, media}, {first + 2, "Root:gone:"}, {first + 9, media}});
        WriteSettings(lines);
        const std::string before = SettingsText();
        Start();
        for (const std::int32_t chosen : {Console().FoldNumber, Console().mFoldNumber})
            EXPECT_EQ(chosen, folder);
        for (const std::int32_t count : {Console().File_Count, Console().mFile_Count})
            EXPECT_EQ(count, folder == 0 ? 0 : 1);
        for (const std::int32_t n : {1, 2, 3, 9, 10, 99})
            for (const auto& button : {Console().Fold(n), Console().mFold(n)}) {
                EXPECT_EQ(button->Value(), n == folder);
                EXPECT_EQ(button->HelpTag(), n == 99 ? "" : n == 1 || n == 10 ? media : own); // one is gone
            }
        EXPECT_EQ(Console().HasBackColor(), flat);
        EXPECT_EQ(Console().BackColor(), flat ? kFlat : kWhite);
        EXPECT_EQ(SettingsText(), before);
        End();
    }
}

TEST_F(StartTest, WhatItIsGivenAndCannotListCostsOneLineAndAFolderIsListed) {
    WriteSettings({{22, MakeFiles("first", {"a"})}});
    MakeFiles("given", {"b", "c"});
    ASSERT_EQ(::mkfifo(Folder().Path("given/d.mov").c_str(), 0600), 0);
    const std::string text = Folder().Write("given/e.txt", "");
    Files().Answers().Close("/dead/");
    const std::tuple<std::string, std::string, std::int32_t> cases[] = {
        {Folder().Path("given"), "", 99},
        {text, "no list shows files of its kind", 99},
        {Folder().Path("gone"), "No such file or directory", 1},
        {Folder().Path("given/d.mov"), "Is a FIFO", 1},
        {"/dead/given", "does not answer in time", 1}};
    for (const auto& [path, cause, pressed] : cases) {
        CapturedStderr captured;
        Start(path);
        EXPECT_EQ(Console().FoldNumber, pressed) << path;
        EXPECT_EQ(Console().File_Count, pressed == 1 ? 1 : 3) << path;
        const std::string line = "kirolane: " + path + ": " + cause;
        EXPECT_EQ(captured.Lines(), std::vector<std::string>(cause.empty() ? 0 : 1, line));
        End();
    }
}

TEST_F(StartTest, FoldersThatDoNotAnswerHoldUpNeitherASaveNorTheStart) {
    Files().Answers().Close("/dead/");
    Start();
    auto form = Instance<SettingForm>();
    Choose("Shortcut_Setting");
    for (std::int32_t n = 1; n <= 10; ++n) {
        form->Folder_Edit(n)->SetText("Root:dead:" + std::to_string(n) + ":");
        form->mFolder_Edit(n)->SetText(n < 10 ? "Root:dead:s" + std::to_string(n) + ":" : "Root:gone:");
    }
    CapturedStderr captured;
    EXPECT_LT(SecondsOf([&] { form->SettingButton()->ReportClick(); }), 1.5);
    EXPECT_EQ(form->MessageLabel()->Caption(), "設定を確定しました");
    EXPECT_EQ(captured.Lines().size(), 19U) << "one a folder";
    form = nullptr;
    End();

    EXPECT_LT(SecondsOf([this] { Launch(); }), 1.5);
    EXPECT_TRUE(Console().Visible());
    EXPECT_EQ(Console().Setting_Data(31), "Root:dead:10:") << "it counts as there";
    EXPECT_NE(Console().Setting_Data(42), "Root:gone:") << "a disk that is well is still asked";
}

} // namespace kirolane::tests
