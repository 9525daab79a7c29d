#include "contract/core/colon_path.h"
#include "logic/about/verform.h"
#include "logic_test.h"
#include "support/captured_stderr.h"

#include <filesystem>

namespace kirolane::tests {

class SettingFormTest : public LogicTest {
protected:
    static SettingForm& Form() { return *Instance<SettingForm>(); }
    void Show() { Choose("Shortcut_Setting"); }
    void Save() { Form().SettingButton()->ReportClick(); }
    static const std::string& Line(std::int32_t n) { return Console().Setting_Data(n); }
    static std::string Message() { return Form().MessageLabel()->Caption(); }

    /// The boxes as "dual full hide", each "-" off, "x" on, in brackets while it cannot be pressed.
    static std::string Boxes() {
        std::string text;
        for (const auto& box : {Form().DisplayMode_Check(), Form().FullScreen_Check(), Form().Hide_Check()}) {
            const std::string mark = box->Value() ? "x" : "-";
            text += box->Enabled() ? mark : "(" + mark + ")";
        }
        return text;
    }
};

TEST_F(SettingFormTest, IsHiddenUntilCalled) {
    Start();
    EXPECT_FALSE(Form().Visible());
    Monitor().ReportMenuChosen("Shortcut_Setting");
    EXPECT_TRUE(Form().Visible());
    EXPECT_TRUE(Console().SettingForm_Flag);
    EXPECT_EQ(Form().FreeSeek_Popup()->Rows().size(), 19U);
    EXPECT_EQ(Form().FreeSeek_Popup()->Rows()[2], "2分");
    EXPECT_EQ(Form().FreeSeek_Popup()->ListIndex(), 2);
}

TEST_F(SettingFormTest, ASaveOfTheDefaultsChangesFourMarkersAndTheFile) {
    SetScreens(2);
    Start();
    std::vector<std::string> before;
    for (std::int32_t n = 0; n <= 200; ++n)
        before.push_back(Line(n));
    Show();
    Save();
    EXPECT_EQ(Message(), "設定を確定しました");
    EXPECT_TRUE(Form().Visible());
    const std::map<std::int32_t, std::string> changed = {
        {1, "// DisplayMode"}, {3, "// FullScreen"}, {13, "// -Sound"}, {21, "// Path"}};
    std::string text;
    for (std::int32_t n = 1; n <= 200; ++n) {
        const auto it = changed.find(n);
        EXPECT_EQ(Line(n), it == changed.end() ? before[static_cast<std::size_t>(n)] : it->second) << n;
        text += Line(n) + "\n";
    }
    EXPECT_EQ(SettingsText(), text);
}

TEST_F(SettingFormTest, TheBoxesShowTheFourModesAndKeepThemApart) {
    const std::tuple<const char*, const char*, const char*, const char*> modes[] = {
        {"true", "false", "false", "x(-)(-)"},
        {"false", "true", "false", "-x(-)"},
        {"false", "false", "true", "--x"},
        {"false", "false", "false", "---"},
        {"true", "true", "true", "x(x)(x)"}, // by hand; the file wins until a box is pressed
        {"", "x", "0", "x(-)(-)"},
    };
    for (const auto& [dual, full, hide, boxes] : modes) {
        SCOPED_TRACE(std::string(dual) + full + hide);
        SetScreens(2);
        WriteSettings({{2, dual}, {4, full}, {8, hide}});
        Start();
        Show();
        EXPECT_EQ(Boxes(), boxes);
        End();
    }
    WriteSettings({{2, "false"}});
    Start();
    Show();
    Form().Hide_Check()->ReportClick();
    EXPECT_EQ(Boxes(), "--x");
    Form().FullScreen_Check()->ReportClick();
    EXPECT_EQ(Boxes(), "-x(-)");
    Form().DisplayMode_Check()->ReportClick();
    EXPECT_EQ(Boxes(), "x(-)(-)");
    Save();
    EXPECT_EQ(Line(2) + Line(4) + Line(8), "truefalsefalse");
    Form().DisplayMode_Check()->ReportClick();
    EXPECT_EQ(Boxes(), "---");
    EXPECT_EQ(Message(), "");
    Form().FullScreen_Check()->ReportClick();
    Form().FullScreen_Check()->ReportClick();
    EXPECT_EQ(Boxes(), "---");
    Form().WindowColor_Check()->ReportClick();
    Save();
    EXPECT_EQ(Line(2) + Line(4) + Line(6) + Line(8), "falsefalsetruefalse");
}

TEST_F(SettingFormTest, ArrowsStepTheFolderNumberWithinOneAndTen) {
    WriteSettings({{16, "9"}, {18, "2"}});
    Start();
    Show();
    const auto number = [] { return Form().FolderNumber_Edit()->Text(); };
    Form().UpDownArrow()->ReportUp();
    EXPECT_EQ(number(), "10");
    Save();
    Form().UpDownArrow()->ReportUp();
    EXPECT_EQ(number(), "10");
    EXPECT_EQ(Message(), "") << "emptied all the same";
    Form().UpDownArrow()->ReportDown();
    EXPECT_EQ(number(), "9");
    Form().mUpDownArrow()->ReportDown();
    Form().mUpDownArrow()->ReportDown();
    EXPECT_EQ(Form().mFolderNumber_Edit()->Text(), "1");
    Do([] { Form().FolderNumber_Edit()->SetText("x"); });
    Form().UpDownArrow()->ReportUp();
    EXPECT_EQ(number(), "x");
}

TEST_F(SettingFormTest, ABadStepChoosesNothingAndIsSavedAsNone) {
    WriteSettings({{12, "0"}, {14, "abc"}});
    Start();
    Show();
    EXPECT_EQ(Form().FreeSeek_Popup()->ListIndex(), -1);
    EXPECT_EQ(Form().mFreeSeek_Popup()->ListIndex(), -1);
    Form().mFreeSeek_Popup()->ReportChoice(18);
    Save();
    EXPECT_EQ(Line(12), "0");
    EXPECT_EQ(Line(14), "19");
}

TEST_F(SettingFormTest, AChosenFolderActsOnceItIsSaved) {
    StartWithMedia({"a.mov"});
    const std::string chosen = MakeMedia("chosen", {"x.mov"});
    Show();
    Save();
    Windows().PrepareFolder(Folder().Path("chosen"), [] { EXPECT_FALSE(Form().Visible()); });
    Form().Folder_Bevel(1)->ReportClick();
    EXPECT_TRUE(Form().Visible());
    EXPECT_EQ(Form().Folder_Edit(1)->Text(), chosen);
    EXPECT_EQ(Message(), "");
    EXPECT_NE(Line(22), chosen);
    Windows().PrepareFolder(Folder().Path("chosen"));
    Form().mFolder_Bevel(10)->ReportClick();
    EXPECT_EQ(Form().mFolder_Edit(10)->Text(), chosen);

    Do([] { Console().Setting_Data.Set(43, "Root:x:"); });
    Save();
    EXPECT_EQ(Line(22), chosen);
    EXPECT_EQ(Line(42), chosen);
    EXPECT_EQ(Line(43), "Sfolder");
    EXPECT_EQ(Console().Fold(1)->HelpTag(), chosen);
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"a.mov"}) << "no scan is started";
    Console().Fold(1)->ReportClick();
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"x.mov"});

    Form().Folder_Bevel(2)->ReportClick(); // cancelled
    EXPECT_EQ(Message(), "設定を確定しました");
}

TEST_F(SettingFormTest, AFolderThatAFileOfLinesCannotHoldIsRefusedInOneLine) {
    Start();
    Show();
    const std::string before = Form().Folder_Edit(4)->Text();
    CapturedStderr captured;
    Windows().PrepareFolder(Folder().MakeFolder("line\nbreak/inner"));
    Form().Folder_Bevel(4)->ReportClick();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("line break:inner:"), std::string::npos) << lines[0];
    EXPECT_EQ(Form().Folder_Edit(4)->Text(), before);
    EXPECT_TRUE(Form().Visible());
}

TEST_F(SettingFormTest, AFolderGoneAtTheSaveBecomesTheOwnOne) {
    StartWithMedia({"a.mov"});
    Show();
    const std::string gone = Line(22);
    std::filesystem::remove_all(Folder().Path("movies"));
    Save();
    EXPECT_EQ(Line(22), ToColonPath(Folder().Path("application"), true));
    EXPECT_EQ(Form().Folder_Edit(1)->Text(), gone) << "until it is shown again";
}

TEST_F(SettingFormTest, ASaveThatCannotBeWrittenSaysSoInOneLine) {
    Start();
    Show();
    Save();
    std::filesystem::remove_all(Folder().Path("home/Library/Application Support/Kirolane"));
    CapturedStderr captured;
    Save();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Setting"), std::string::npos) << lines[0];
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(Line(1), "// DisplayMode") << "the lines stay changed";
}

TEST_F(SettingFormTest, ClosingItDropsTheEditsAndTheNextShowingIsNew) {
    Start();
    Show();
    Form().WindowColor_Check()->ReportClick();
    Do([] { Console().Rate()->SetFocus(); });
    Form().ReportCloseRequested();
    EXPECT_EQ(Console().FocusControl()->Name(), "StrGrid");
    EXPECT_EQ(TheRuntime().Forms().All().size(), 4U);
    Show();
    EXPECT_TRUE(Form().Visible());
    EXPECT_FALSE(Form().WindowColor_Check()->Value());
}

TEST_F(SettingFormTest, TheAboutWindowIsShownAndHidden) {
    Start();
    const auto form = Instance<VerForm>();
    Monitor().ReportMenuChosen("Shortcut_Ver");
    Choose("Shortcut_Ver");
    EXPECT_TRUE(form->Visible());
    form->OKButton()->ReportClick();
    EXPECT_FALSE(form->Visible());
    form->ReportCloseRequested();
    EXPECT_EQ(TheRuntime().Forms().All().size(), 5U);
}

} // namespace kirolane::tests
