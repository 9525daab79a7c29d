#include "contract/core/colon_path.h"
#include "logic/about/verform.h"
#include "logic_test.h"
#include "support/captured_stderr.h"

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

TEST_F(SettingFormTest, ASaveOfTheDefaultsChangesFourMarkersAndTheFile) {
    SetScreens(2);
    Start();
    std::map<std::int32_t, std::string> lines;
    for (std::int32_t n = 1; n <= 200; ++n)
        lines[n] = Line(n);
    Show();
    EXPECT_TRUE(Console().SettingForm_Flag);
    EXPECT_EQ(Form().FreeSeek_Popup()->Rows().size(), 19U);
    EXPECT_EQ(Form().FreeSeek_Popup()->Rows()[2], "2分");
    EXPECT_EQ(Form().FreeSeek_Popup()->ListIndex(), 2);
    Save();
    EXPECT_TRUE(Form().Visible());
    for (const auto& [n, marker] :
         Lines{{1, "// DisplayMode"}, {3, "// FullScreen"}, {13, "// -Sound"}, {21, "// Path"}})
        lines[n] = marker;
    std::string text;
    for (const auto& [n, line] : lines) {
        EXPECT_EQ(Line(n), line) << n;
        text += line + "\n";
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
        SetScreens(2);
        WriteSettings({{2, dual}, {4, full}, {8, hide}});
        Start();
        Show();
        EXPECT_EQ(Boxes(), boxes) << dual << full << hide;
        End();
    }
    WriteSettings({{2, "false"}});
    Start();
    Show();
    const auto dual = Form().DisplayMode_Check();
    const auto full = Form().FullScreen_Check();
    const auto hide = Form().Hide_Check();
    const std::pair<Ref<CheckBox>, const char*> presses[] = {
        {hide, "--x"},   {full, "-x(-)"}, {dual, "x(-)(-)"}, {dual, "---"},
        {full, "-x(-)"}, {full, "---"},   {dual, "x(-)(-)"}, {Form().WindowColor_Check(), "x(-)(-)"},
        {dual, "---"},   {hide, "--x"}};
    for (const auto& [box, boxes] : presses) {
        Save();
        const std::string saved = Line(2) + Line(4) + Line(6) + Line(8);
        EXPECT_EQ(Message(), "設定を確定しました");
        box->ReportClick();
        EXPECT_EQ(Boxes(), boxes);
        EXPECT_EQ(Message(), "");
        EXPECT_EQ(Line(2) + Line(4) + Line(6) + Line(8), saved) << "until the save";
    }
    Save();
    EXPECT_EQ(Line(2) + Line(4) + Line(6) + Line(8), "falsefalsetruetrue");
    full->ReportClick();
    Save();
    EXPECT_EQ(Line(2) + Line(4) + Line(6) + Line(8), "falsetruetruefalse");
}

TEST_F(SettingFormTest, ArrowsStepTheFolderNumberWithinOneAndTenAndStepsAreChosen) {
    WriteSettings({{12, "0"}, {14, "abc"}, {16, "9"}, {18, "2"}});
    Start();
    Show();
    const auto movie = Form().UpDownArrow();
    const auto sound = Form().mUpDownArrow();
    const std::tuple<Ref<UpDownArrows>, void (UpDownArrows::*)(), const char*> presses[] = {
        {movie, &UpDownArrows::ReportUp, "10 2"},  {movie, &UpDownArrows::ReportUp, "10 2"},
        {movie, &UpDownArrows::ReportDown, "9 2"}, {sound, &UpDownArrows::ReportUp, "9 3"},
        {sound, &UpDownArrows::ReportDown, "9 2"}, {sound, &UpDownArrows::ReportDown, "9 1"},
        {sound, &UpDownArrows::ReportDown, "9 1"}};
    for (const auto& [arrows, press, numbers] : presses) {
        Save();
        ((*arrows).*press)();
        EXPECT_EQ(Form().FolderNumber_Edit()->Text() + " " + Form().mFolderNumber_Edit()->Text(), numbers);
        EXPECT_EQ(Message(), "");
    }
    for (const auto& popup : {Form().FreeSeek_Popup(), Form().mFreeSeek_Popup()}) {
        EXPECT_EQ(popup->ListIndex(), -1) << "a bad step chooses nothing";
        Save();
        popup->ReportChoice(18);
        EXPECT_EQ(Message(), "");
    }
    EXPECT_EQ(Line(12) + Line(14) + Line(16) + Line(18), "19091") << "the second step is not saved yet";
    Do([] { Form().FolderNumber_Edit()->SetText("x"); });
    movie->ReportUp();
    Save();
    EXPECT_EQ(Line(14) + Line(16), "19x");
}

TEST_F(SettingFormTest, AChosenFolderActsOnceItIsSaved) {
    StartWithMedia({"a.mov"});
    const std::string chosen = MakeMedia("chosen", {"x.mov"});
    Show();
    Save();
    Form().Folder_Bevel(2)->ReportClick(); // cancelled
    EXPECT_EQ(Message(), "設定を確定しました");
    const Ref<EditField> fields[] = {Form().Folder_Edit(1), Form().mFolder_Edit(10)};
    for (const auto& bevel : {Form().Folder_Bevel(1), Form().mFolder_Bevel(10)}) {
        Windows().PrepareFolder(Folder().Path("chosen"), [] { EXPECT_FALSE(Form().Visible()); });
        bevel->ReportClick();
        EXPECT_TRUE(Form().Visible());
        EXPECT_EQ(Message(), "");
    }
    for (const auto& field : fields)
        EXPECT_EQ(field->Text(), chosen);
    EXPECT_NE(Line(22), chosen);

    Do([] { Console().Setting_Data.Set(43, "Root:x:"); });
    Save();
    EXPECT_EQ(Line(22) + Line(42) + Line(43), chosen + chosen + "Sfolder");
    EXPECT_EQ(Console().Fold(1)->HelpTag(), chosen);
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"a.mov"}) << "no scan is started";
    Console().Fold(1)->ReportClick();
    Settle();
    EXPECT_EQ(Names(Console().StrGrid()), std::vector<std::string>{"x.mov"});

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
    StartWithMedia({"a.mov"});
    Show();
    const std::string gone = Line(22);
    std::filesystem::remove_all(Folder().Path("movies"));
    Save();
    EXPECT_EQ(Line(22), ToColonPath(Folder().Path("application"), true));
    EXPECT_EQ(Form().Folder_Edit(1)->Text(), gone) << "until it is shown again";
    std::filesystem::remove_all(Folder().Path("home/Library/Application Support/Kirolane"));
    CapturedStderr captured;
    Save();
    const auto lines = captured.Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Setting"), std::string::npos) << lines[0];
    EXPECT_EQ(Message(), "");
    EXPECT_EQ(Line(1), "// DisplayMode") << "the lines stay changed";
}

TEST_F(SettingFormTest, ClosingItDropsTheEditsAndTheAboutWindowIsOnlyHidden) {
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
    for (Window* window : {static_cast<Window*>(&Monitor()), static_cast<Window*>(&Console())}) {
        window->ReportMenuChosen("Shortcut_Ver");
        EXPECT_TRUE(about->Visible());
        about->OKButton()->ReportClick();
        EXPECT_FALSE(about->Visible());
    }
    about->ReportCloseRequested();
    EXPECT_EQ(TheRuntime().Forms().All().size(), 5U);
}

} // namespace kirolane::tests
