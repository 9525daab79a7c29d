#include "contract/core/colon_path.h"
#include "logic/about/verform.h"
#include "logic_test.h"
#include "support/captured_stderr.h"
#include "support/silent_mount.h"

#include <chrono>
#include <optional>

namespace kirolane::tests {

class StartTest : public LogicTest {};

TEST_F(StartTest, StandsIdleWithTheCurtainUpAndTheOtherFormsHidden) {
    SetScreens(2);
    Start();
    const Mainform& console = Console();
    EXPECT_EQ(console.Title(), "Kirolane");
    EXPECT_TRUE(console.Visible());
    EXPECT_TRUE(Monitor().Visible());
    EXPECT_FALSE(Sound().Visible());
    EXPECT_FALSE(Instance<SettingForm>()->Visible());
    EXPECT_FALSE(Instance<VerForm>()->Visible());
    EXPECT_EQ(console.VolumeName, ToColonPath(Folder().Path("home"), true));

    for (const auto& list : {console.StrGrid(), console.mStrGrid()}) {
        EXPECT_EQ(list->ListCount(), 26);
        EXPECT_EQ(list->Cell(0, 1), "");
    }
    EXPECT_FALSE(console.QTM()->Visible());
    EXPECT_FALSE(console.QTM_PlayButton()->Enabled());
    EXPECT_FALSE(console.QTM_PosBar()->Enabled());
    EXPECT_TRUE(console.DummyBack()->Visible());
}

TEST_F(StartTest, FolderNumbersChooseTheFirstScans) {
    const struct {
        const char* line;
        std::int32_t number; ///< 0: no button, no scan
    } cases[] = {{"1", 1}, {"10", 10}, {"0", 0}, {"11", 0}, {"", 0}, {"01", 0}};
    const std::string media = MakeMedia("media", {"a.mov", "b.wav"});
    for (const auto& [text, number] : cases) {
        SCOPED_TRACE(text);
        WriteSettings({{16, text}, {18, text}, {22, media}, {31, media}, {33, media}, {42, media}});
        Start();
        EXPECT_EQ(Console().FoldNumber, number);
        EXPECT_EQ(Console().mFoldNumber, number);
        EXPECT_EQ(Console().File_Count, number == 0 ? 0 : 1);
        EXPECT_EQ(Console().mFile_Count, number == 0 ? 0 : 1);
        for (std::int32_t n = 1; n <= 10; ++n) {
            EXPECT_EQ(Console().Fold(n)->Value(), n == number);
            EXPECT_EQ(Console().mFold(n)->Value(), n == number);
        }
        EXPECT_FALSE(Console().Fold(99)->Value());
        End();
    }
}

TEST_F(StartTest, AFolderThatIsGoneBecomesTheOwnFolderInMemory) {
    const std::string gone = ToColonPath(Folder().Path("gone"), true);
    const std::string own = ToColonPath(Folder().Path("application"), true);
    const std::string there = MakeMedia("there", {});
    WriteSettings({{24, gone}, {25, there}, {35, gone}});
    const std::string before = SettingsText();
    Start();
    EXPECT_EQ(Console().Setting_Data(24), own);
    EXPECT_EQ(Console().Fold(3)->HelpTag(), own);
    EXPECT_EQ(Console().Fold(4)->HelpTag(), there);
    EXPECT_EQ(Console().mFold(3)->HelpTag(), own);
    EXPECT_EQ(Console().Fold(99)->HelpTag(), "");
    EXPECT_EQ(SettingsText(), before);
}

TEST_F(StartTest, TheConsoleTakesItsColour) {
    const struct {
        const char* line;
        bool flat;
    } cases[] = {{"true", true}, {"TRUE", true}, {"false", false}, {"", false}, {"1", false}};
    for (const auto& [text, flat] : cases) {
        SCOPED_TRACE(text);
        WriteSettings({{6, text}});
        Start();
        EXPECT_EQ(Console().HasBackColor(), flat);
        EXPECT_EQ(Console().BackColor(), flat ? kFlat : kWhite);
        End();
    }
}

TEST(DeadMountTest, FoldersThatDoNotAnswerHoldUpNeitherASaveNorTheStart) {
    const TemporaryFolder folder;
    SilentMount files(folder.MakeFolder("home"), folder.MakeFolder("application"));
    files.SilentBelow("/dead/");
    ASSERT_EQ(files.Prepare(), "");
    headless::Headless headless;
    std::optional<Runtime> runtime;
    std::unique_ptr<App> app;
    const auto start = [&] {
        app.reset();
        runtime.emplace(headless.windows, headless.media, files);
        std::string failure;
        ASSERT_TRUE(runtime->Start([&] { app = StartKirolane(); }, failure)) << failure;
    };
    const auto secondsOf = [](const std::function<void()>& work) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    start();
    ASSERT_TRUE(headless.windows.RunUntilIdle());
    auto form = Instance<SettingForm>();
    Instance<Mainform>()->SettingFormShow_Action();
    for (std::int32_t n = 1; n <= 10; ++n) {
        form->Folder_Edit(n)->SetText("Root:dead:" + std::to_string(n) + ":");
        form->mFolder_Edit(n)->SetText(n < 10 ? "Root:dead:s" + std::to_string(n) + ":" : "Root:gone:");
    }
    CapturedStderr captured;
    EXPECT_LT(secondsOf([&] { form->SettingButton()->ReportClick(); }), 1.5);
    EXPECT_EQ(form->MessageLabel()->Caption(), "設定を確定しました");
    EXPECT_EQ(captured.Lines().size(), 19U) << "one a folder";
    form = nullptr;

    EXPECT_LT(secondsOf(start), 1.5);
    const Mainform& console = *Instance<Mainform>();
    EXPECT_TRUE(console.Visible());
    EXPECT_EQ(console.Setting_Data(31), "Root:dead:10:") << "it counts as there";
    EXPECT_NE(console.Setting_Data(42), "Root:gone:") << "a disk that is well is still asked";
    files.Answer();
}

} // namespace kirolane::tests
