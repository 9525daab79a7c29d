// Each class of control: what it shows as it changes, what it reports, and what assistive tools read.

#include "contract/bevelbutton.h"
#include "contract/checkbox.h"
#include "contract/editfield.h"
#include "contract/popupmenu.h"
#include "contract/progressbar.h"
#include "contract/statictext.h"
#include "contract/tabpanel.h"
#include "contract/updownarrows.h"
#include "qt_test.h"

namespace kirolane::tests {

namespace {

class ControlsTest : public QtTest {
protected:
    template <class T> static Ref<T> Setting(std::string_view name) { return Get<T, SettingShow>(name); }
    /// What an assistive tool offers first for the widget.
    static void PressByTool(QWidget& widget) {
        auto* actions = QAccessible::queryAccessibleInterface(&widget)->actionInterface();
        actions->doAction(actions->actionNames().constFirst());
    }
};

TEST_F(ControlsTest, ALabelShowsItsTextAndLooksDisabled) {
    Do([] { Get<StaticText>("FileLabel")->SetText("映画\xFF & <b>.mov"); });
    const auto* label = Find<QLabel>("Mainform", "FileLabel");
    EXPECT_EQ(label->text(), QStringLiteral("映画\uFFFD & <b>.mov"));
    EXPECT_EQ(label->accessibleName(), label->text());
    const QImage before = Look("Mainform", "FileLabel");
    Do([] { Get<StaticText>("FileLabel")->SetEnabled(false); });
    EXPECT_NE(Look("Mainform", "FileLabel"), before);
}

TEST_F(ControlsTest, ALongPathIsCutBeforeTheSignThatStandsInItsBox) {
    const std::string path(300, 'W');
    const auto look = [&](const char* sign, const std::string& text) {
        Do([&] {
            Get<StaticText>("LoopLabel")->SetText(sign);
            Get<StaticText>("DirLabel")->SetText(text);
        });
        return Look("Mainform", "LoopLabel");
    };
    EXPECT_EQ(look("1", path), look("1", ""));
    EXPECT_NE(look("", path), look("", "")) << "without the sign the whole box is the path's";
    look("1", path);
    EXPECT_EQ(Find("Mainform", "DirLabel")->accessibleName().toStdString(), path) << "tools read all of it";
}

TEST_F(ControlsTest, AButtonReportsClicksAndIsPressedOnlyByItsControl) {
    auto fold = Get<BevelButton>("Fold2");
    int clicks = 0;
    fold->OnAction = [&] { ++clicks; };
    auto* button = Find<QAbstractButton>("Mainform", "Fold2");
    const QImage raised = Look("Mainform", "Fold2");
    Click(button);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(button->isChecked());
    PressByTool(*button);
    EXPECT_TRUE(Until([&] { return clicks == 2; }));
    EXPECT_FALSE(button->isChecked());
    EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);

    Do([&] { fold->SetValue(true); });
    EXPECT_TRUE(button->isChecked());
    EXPECT_NE(Look("Mainform", "Fold2"), raised);
    Do([&] { fold->SetEnabled(false); });
    Click(button);
    EXPECT_EQ(clicks, 2);
}

TEST_F(ControlsTest, AToolTipShowsItsPathInLinesThatStayOnTheOperatorsDisplay) {
    const auto shown = [&](const std::string& path) {
        Do([&] { Get<BevelButton>("Fold1")->SetHelpTag(path); });
        QTextDocument tip;
        tip.setHtml(Find("Mainform", "Fold1")->toolTip());
        return tip.toPlainText();
    };
    EXPECT_EQ(shown("Root:a\xFF:<b>  &:"), QStringLiteral("Root:a\uFFFD:<b>  &:"));
    EXPECT_EQ(shown(""), QString());
    const std::string path = "Root:<b>&" + std::string(100, 'W') + ":folder:" + std::string(20, 'i') + ":";
    const QStringList lines = shown(path).split('\n');
    EXPECT_GT(lines.size(), 2);
    EXPECT_EQ(lines.join(QString()).toStdString(), path);
    for (const QString& line : lines)
        EXPECT_LE(QFontMetrics(QToolTip::font()).horizontalAdvance(line), 480);
}

TEST_F(ControlsTest, TheLevelFillsFromTheBottomAndFollowsThePointer) {
    std::vector<int> heights;
    auto bar = Get<ProgressBar>("VolumeProgress");
    bar->OnMouseMove = [&](std::int32_t, std::int32_t) { heights.push_back(m_console->MouseY()); };
    Do([&] { bar->SetValue(50); });
    QWidget* widget = Find("Mainform", "VolumeProgress");
    QTest::mouseMove(widget, QPoint(10, 5));
    QTest::mouseMove(widget, QPoint(10, 35));
    EXPECT_EQ(heights, (std::vector<int>{365, 395}));
    const QImage half = Look("Mainform", "VolumeProgress");
    EXPECT_EQ(half.pixelColor(10, 8), QColor(Qt::white));
    EXPECT_NE(half.pixelColor(10, 28), QColor(Qt::white));
}

TEST_F(ControlsTest, TabsReportThePageThatAPersonTurnsTo) {
    auto panel = Get<TabPanel>("ListTab");
    auto* tabs = Find<QTabBar>("Mainform", "ListTab.Tabs");
    std::vector<int> pages;
    panel->OnChange = [&] { pages.push_back(panel->Value()); };
    Click(tabs, tabs->tabRect(1).center());
    EXPECT_EQ(pages, std::vector<int>{1});
    Do([&] { panel->SetValue(0); });
    EXPECT_EQ(tabs->currentIndex(), 0);
}

class SettingControlsTest : public ControlsTest {
protected:
    void SetUp() override {
        ControlsTest::SetUp();
        ShowForm<SettingShow>();
    }
};

TEST_F(SettingControlsTest, ATickFollowsItsControl) {
    auto box = Setting<CheckBox>("FullScreen_Check");
    auto* widget = Find<QAbstractButton>("SettingForm", "FullScreen_Check");
    int actions = 0;
    box->OnAction = [&] { ++actions; };
    Click(widget, {8, 10});
    EXPECT_FALSE(box->Value()) << "it is disabled";
    Do([&] { box->SetEnabled(true); });
    Click(widget, {8, 10});
    EXPECT_TRUE(box->Value() && widget->isChecked());
    EXPECT_EQ(actions, 1);
    PressByTool(*widget);
    EXPECT_TRUE(Until([&] { return actions == 2; }));
    EXPECT_FALSE(box->Value() || widget->isChecked());
    box->OnAction = [&] { box->SetValue(false); }; // a handler that puts the box back
    Click(widget, {8, 10});
    EXPECT_FALSE(widget->isChecked());
}

TEST_F(SettingControlsTest, WhatAToolPressesAsTheWindowGoesIsLeftAlone) {
    int actions = 0;
    Do([&] {
        Setting<CheckBox>("FullScreen_Check")->SetEnabled(true);
        Setting<CheckBox>("FullScreen_Check")->OnAction = [&] { ++actions; };
        Setting<BevelButton>("Folder1_Bevel")->OnAction = [&] { ++actions; };
    });
    Do([] { Instance<SettingShow>()->Close(); }); // it goes from the loop, ahead of what the presses post
    for (const char* name : {"FullScreen_Check", "Folder1_Bevel"})
        PressByTool(*Find("SettingForm", name));
    Settle();
    EXPECT_EQ(actions, 0);
}

TEST_F(SettingControlsTest, APopupOffersItsRowsAndReportsAChoice) {
    auto popup = Setting<PopupMenu>("FreeSeek_Popup");
    auto* box = Find<QComboBox>("SettingForm", "FreeSeek_Popup");
    int changes = 0;
    Do([&] {
        for (const char* row : {"1分", "1分30秒", "2分"})
            popup->AddRow(row);
        popup->OnChange = [&] { ++changes; };
    });
    EXPECT_EQ(box->count(), 3);
    EXPECT_EQ(box->currentIndex(), -1);
    Do([&] { popup->SetListIndex(1); });
    EXPECT_EQ(box->currentText(), QStringLiteral("1分30秒"));
    box->setCurrentIndex(2);
    EXPECT_EQ(popup->ListIndex(), 2);
    EXPECT_EQ(changes, 2);
}

TEST_F(SettingControlsTest, ArrowsStepBothWays) {
    std::string steps;
    Setting<UpDownArrows>("UpDownArrow")->OnUp = [&] { steps += "up "; };
    Setting<UpDownArrows>("UpDownArrow")->OnDown = [&] { steps += "down "; };
    for (const char* half : {"UpDownArrow.Up", "UpDownArrow.Down"})
        Click(Find("SettingForm", half));
    EXPECT_EQ(steps, "up down ");
}

TEST_F(SettingControlsTest, AFieldIsTypedInAndShowsBothEndsOfALongPathWhileItIsLocked) {
    auto field = Setting<EditField>("Folder1_Edit");
    auto* line = Find<QLineEdit>("SettingForm", "Folder1_Edit");
    const auto look = [&](const std::string& path) {
        Do([&] { field->SetText(path); });
        return Look("SettingForm", "Folder1_Edit");
    };
    const std::string middle(200, 'm');
    const QImage usual = look("Root:a" + middle + ":b:");
    EXPECT_NE(look("Root:a" + middle + ":c:"), usual);
    EXPECT_NE(look("Root:x" + middle + ":b:"), usual);
    EXPECT_EQ(look("Root:a" + middle + "n" + middle + ":b:"), usual);

    look("Root:\xE3\x83:x");
    EXPECT_EQ(line->text(), QStringLiteral("Root:\uFFFD\uFFFD:x"));
    EXPECT_EQ(field->Text(), "Root:\xE3\x83:x") << "shown otherwise, kept as it is";
    Do([&] {
        field->SetText("");
        field->SetEnabled(true);
        field->SetFocus();
    });
    ASSERT_TRUE(Until([] { return Instance<SettingShow>()->Active(); }));
    Press(Qt::Key_A);
    Press(Qt::Key_B, Qt::ShiftModifier); // without Shift or in the console these are commands
    EXPECT_EQ(field->Text().size(), 2U);
    EXPECT_EQ(field->Text(), line->text().toStdString());
}

} // namespace

} // namespace kirolane::tests
