#include "contract/core/colon_path.h"
#include "logic/about/verform.h"
#include "logic_test.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/document.h"

#include <filesystem>
#include <tuple>

namespace kirolane::tests {

class SettingFormTest : public LogicTest {
protected:
    static SettingForm& Form() { return *Instance<SettingForm>(); }
    void Show() { Choose("Shortcut_Setting"); }
    void Save() { Form().SettingButton()->ReportClick(); }
    static const std::string& Line(std::int32_t n) { return Console().Setting_Data(n); }
    static std::string Message() { return Form().MessageLabel()->Caption(); }

    /// Dual display, full screen, hide: each "-" off, "x" on, in brackets while it cannot be pressed.
    static std::string Boxes() {
        std::string text;
        for (const auto& box : {Form().DisplayMode_Check(), Form().FullScreen_Check(), Form().Hide_Check()}) {
            const std::string mark = box->Value() ? "x" : "-";
            text += box->Enabled() ? mark : "(" + mark + ")";
        }
        return text;
    }
};

TEST_F(SettingFormTest, TheFirstStartAndASaveWriteWhatTheDocumentTells) {
    std::string written;
    std::string saved;
    for (auto& row : DocumentRows("settings.md", 4)) {
        if (row[1] == "the program's folder")
            row[1] = ToColonPath(Folder().Path("application"), true);
        const int first = std::stoi(row[0]);
        for (int n = first; n <= (row[0].size() > 3 ? std::stoi(row[0].substr(row[0].rfind(' '))) : first);
             ++n) {
            written += row[1] + "\n";
            saved += (row[2].empty() ? row[1] : row[2]) + "\n";
        }
    }
    SetScreens(2);
    Start();
    EXPECT_EQ(SettingsText(), written);
    End();
    Start();
    EXPECT_EQ(SettingsText(), written);
    Show();
    EXPECT_TRUE(Console().SettingForm_Flag);
    EXPECT_EQ(Form().FreeSeek_Popup()->ListIndex(), 2);
    Save();
    EXPECT_TRUE(Form().Visible());
    EXPECT_EQ(SettingsText(), saved);
}

TEST_F(SettingFormTest, AnEmptyFirstLineGivesTheDefaultsInMemoryAloneAndAShortFileEmptyLines) {
    for (const std::string text : {"", "\nfalse\nx\ntrue\n", "\r\n", "x"}) {
        SCOPED_TRACE(text);
        const bool isShort = text == "x";
        WriteSettings({});
        static_cast<void>(Folder().Write(kSettings, text));
        SetScreens(2);
        Start();
        EXPECT_EQ(Line(1) + Line(2) + Line(200), isShort ? "x" : "// DualDisplayModetruenil");
        EXPECT_EQ(Console().FoldNumber, isShort ? 0 : 1);
        EXPECT_EQ(Monitor().FullScreen(), !isShort) << "no placement";
        EXPECT_EQ(Monitor().Visible(), !isShort) << "a bad line 8 hides it";
        EXPECT_EQ(SettingsText(), text);
        End();
    }
}

TEST_F(SettingFormTest, AFileThatIsNotThereOrMayNotBeReadFailsTheStartAndIsNamed) {
    WriteSettings({});
    const std::string file = Folder().Path(kSettings);
    std::filesystem::permissions(Folder().Path("home"), std::filesystem::perms::all);
    std::filesystem::permissions(file, std::filesystem::perms::none);
    RunAsOrdinaryUser(Folder().Path(), [&] { EXPECT_NE(Launch().find(file), std::string::npos); });
    std::filesystem::remove(file); // in a folder that is there: somebody's settings are gone
    EXPECT_NE(Launch().find(file), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(file)) << "it is not made anew";
}

TEST_F(SettingFormTest, TheBoxesShowTheFourModesAndKeepThemApart) {
    const std::tuple<const char*, const char*, const char*, const char*> modes[] = {
        {"true", "false", "false", "x(-)(-)"},
        {"false", "true", "false", "-x(-)"},
        {"false", "false", "true", "--x"},
        {"true", "true", "true", "x(x)(x)"}, // by hand; the file wins until a box is pressed
        {"", "x", "0", "x(-)(-)"},
        {"false", "false", "false", "---"}};
    for (const auto& [dual, full, hide, boxes] : modes) {
        End();
        SetScreens(2);
        WriteSettings({{2, dual}, {4, full}, {8, hide}});
        Start();
        Show();
        EXPECT_EQ(Boxes(), boxes) << dual << full << hide;
    }
    const auto dual = Form().DisplayMode_Check();
    const auto full = Form().FullScreen_Check();
    const auto hide = Form().Hide_Check();
    const std::tuple<Ref<CheckBox>, const char*, const char*> presses[] = {
        // and what the next save writes
        {hide, "--x", "falsefalsetrue"},     {full, "-x(-)", "falsetruefalse"},
        {dual, "x(-)(-)", "truefalsefalse"}, {dual, "---", "falsefalsefalse"},
        {full, "-x(-)", "falsetruefalse"},   {full, "---", "falsefalsefalse"},
        {dual, "x(-)(-)", "truefalsefalse"}, {Form().WindowColor_Check(), "x(-)(-)", "truefalsefalse"}};
    std::string saved = "falsefalsefalse";
    for (const auto& [box, boxes, lines] : presses) {
        box->ReportClick();
        EXPECT_EQ(Boxes(), boxes);
        EXPECT_EQ(Message(), "");
        EXPECT_EQ(Line(2) + Line(4) + Line(8), saved) << "until the save";
        Save();
        EXPECT_EQ(Message(), "設定を確定しました");
        EXPECT_EQ(Line(2) + Line(4) + Line(8), saved = lines);
    }
    EXPECT_EQ(Line(6), "true");
}

TEST_F(SettingFormTest, ArrowsStepTheFolderNumberWithinOneAndTenAndStepsAreChosen) {
    WriteSettings({{12, "0"}, {14, "abc"}, {16, "9"}, {18, "2"}});
    Start();
    Show();
    const auto movie = Form().UpDownArrow();
    const auto sound = Form().mUpDownArrow();
    const std::tuple<Ref<UpDownArrows>, bool, const char*> presses[] = {
        {movie, true, "10 2"}, {movie, true, "10 2"}, {movie, false, "9 2"}, {sound, true, "9 3"},
        {sound, false, "9 2"}, {sound, false, "9 1"}, {sound, false, "9 1"}};
    for (const auto& [arrows, up, numbers] : presses) {
        Save();
        up ? arrows->ReportUp() : arrows->ReportDown();
        EXPECT_EQ(Form().FolderNumber_Edit()->Text() + " " + Form().mFolderNumber_Edit()->Text(), numbers);
        EXPECT_EQ(Message(), "");
    }
    for (const auto& popup : {Form().FreeSeek_Popup(), Form().mFreeSeek_Popup()}) {
        EXPECT_EQ(popup->ListIndex(), -1) << "a bad step chooses nothing";
        Save();
        popup->ReportChoice(18);
        EXPECT_EQ(Message(), "");
    }
    Save();
    EXPECT_EQ(Line(12) + Line(14) + Line(16) + Line(18), "191991");
}

TEST_F(SettingFormTest, AChosenFolderActsOnceItIsSaved) {
    StartWithFiles({"a"});
    const std::string chosen = MakeMedia("chosen", {"x.mov"});
    Show();
    Save();
    Form().Folder_Bevel(2)->ReportClick(); // cancelled
    EXPECT_EQ(Message(), "設定を確定しました");
    for (const auto& bevel : {Form().Folder_Bevel(1), Form().mFolder_Bevel(10)}) {
        Windows().PrepareFolder(Folder().Path("chosen"), [] { EXPECT_FALSE(Form().Visible()); });
        bevel->ReportClick();
        EXPECT_TRUE(Form().Visible());
        EXPECT_EQ(Message(), "");
    }
    EXPECT_EQ(Form().Folder_Edit(1)->Text() + Form().mFolder_Edit(10)->Text(), chosen + chosen);
    EXPECT_NE(Line(22), chosen);

    Do([] { Console().Setting_Data.Set(43, "Root:x:"); });
    Save();
    EXPECT_EQ(Line(22) + Line(42) + Line(43), chosen + chosen + "Sfolder");
    EXPECT_EQ(Console().Fold(1)->HelpTag(), chosen);
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"a.mov"}) << "no scan is started";

    // One that a file of lines cannot hold is refused.
    CapturedStderr captured;
    Windows().PrepareFolder(Folder().MakeFolder("line\nbreak/inner"));
    Form().Folder_Bevel(1)->ReportClick();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("line break:inner:"), std::string::npos) << lines[0];
    EXPECT_EQ(Form().Folder_Edit(1)->Text(), chosen);
    EXPECT_TRUE(Form().Visible());
}

TEST_F(SettingFormTest, AFolderGoneAtTheSaveBecomesTheOwnOneAndASaveThatFailsSaysSoInOneLine) {
    StartWithFiles({"a"});
    Show();
    std::filesystem::remove_all(Folder().Path("media"));
    Save();
    EXPECT_EQ(Line(22), ToColonPath(Folder().Path("application"), true));
    std::filesystem::remove_all(Folder().Path("home/Library/Application Support/Kirolane"));
    CapturedStderr captured;
    Save();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Setting"), std::string::npos) << lines[0];
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(Line(1), "// DisplayMode") << "the lines stay changed";
}

TEST_F(SettingFormTest, ClosingItDropsTheEditsAndTheAboutWindowComesAndGoes) {
    Start();
    Show();
    Form().WindowColor_Check()->ReportClick();
    Do([] { Console().Rate()->SetFocus(); });
    Form().ReportCloseRequested();
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
    EXPECT_EQ(TheRuntime().Forms().All().size(), 4U);
    Monitor().ReportMenuChosen("Shortcut_Setting"); // a new one
    EXPECT_TRUE(Form().Visible());
    EXPECT_FALSE(Form().WindowColor_Check()->Value());

    const auto about = Instance<VerForm>();
    Choose("Shortcut_Ver");
    EXPECT_TRUE(about->Visible());
    about->OKButton()->ReportClick();
    EXPECT_FALSE(about->Visible());
}

} // namespace kirolane::tests
