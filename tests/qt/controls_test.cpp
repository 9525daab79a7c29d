// Each class of control: what it shows, what it reports, and what assistive tools read.

#include "backends/qt/fonts.h"
#include "contract/bevelbutton.h"
#include "contract/checkbox.h"
#include "contract/editfield.h"
#include "contract/popupmenu.h"
#include "contract/progressbar.h"
#include "contract/statictext.h"
#include "contract/tabpanel.h"
#include "contract/updownarrows.h"
#include "logic/lists/media_types.h"
#include "logic/video/rate_table.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTabBar>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace kirolane::tests {

namespace {

class ControlsTest : public QtTest {
protected:
    void SetUp() override { m_console = StartWith<ConsoleShow>(); }
    template <class T> Ref<T> Get(std::string_view name) { return m_console->Control<T>(name); }
    /// What an assistive tool offers first for the widget.
    static void PressByTool(QWidget& widget) {
        auto* actions = QAccessible::queryAccessibleInterface(&widget)->actionInterface();
        actions->doAction(actions->actionNames().constFirst());
    }

    Ref<ConsoleShow> m_console;
};

TEST_F(ControlsTest, ALabelShowsItsTextAndLooksDisabled) {
    Do([&] { Get<StaticText>("FileLabel")->SetText("映画\xFF & <b>.mov"); });
    const auto* label = Find<QLabel>("Mainform", "FileLabel");
    EXPECT_EQ(label->text(), QStringLiteral("映画\uFFFD & <b>.mov"));
    EXPECT_EQ(label->accessibleName(), label->text());
    const QImage before = Look("Mainform", "FileLabel");
    Do([&] { Get<StaticText>("FileLabel")->SetEnabled(false); });
    EXPECT_NE(Look("Mainform", "FileLabel"), before);
}

TEST_F(ControlsTest, TextFitsItsBoxes) {
    ASSERT_EQ(QFontInfo(Find("Mainform", "MaxTime")->font()).family(), QStringLiteral("IPAPGothic"));
    const auto fits = [](const ControlDesign& row, std::string_view text) {
        const QFontMetrics metrics(qt::FontOf(row));
        const QString shown = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
        EXPECT_LE(metrics.horizontalAdvance(shown), row.rect.width) << row.name << " " << text;
        EXPECT_LE(metrics.height(), row.rect.height) << row.name;
    };
    const auto all = [&](std::span<const ControlDesign> rows) {
        for (const ControlDesign& row : rows)
            if (row.kind == ControlKind::StaticText || row.kind == ControlKind::BevelButton ||
                row.kind == ControlKind::PushButton || row.kind == ControlKind::CheckBox)
                fits(row, row.text);
    };
    all(design::kMainformControls);
    all(design::kMusicFormControls);
    all(design::kSettingFormControls);
    all(design::kVerFormControls);

    // What the program writes into them as it runs.
    const auto also = [&](std::span<const ControlDesign> rows, std::string_view name, std::string_view text) {
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.name == name; });
        ASSERT_NE(row, rows.end()) << name;
        fits(*row, text);
    };
    for (const std::span<const ControlDesign> rows :
         {std::span<const ControlDesign>(design::kMainformControls), {design::kMusicFormControls}}) {
        for (const RateRow& rate : kRates)
            also(rows, "RateText", rate.caption);
        for (const char* mode : {"再生中", "一時停止", "停止"})
            also(rows, "PlayModeLabel", mode);
        also(rows, "VolumeLabel", "Volume：100");
        also(rows, "MaxTime", "59：59：59");
    }
    for (const MediaTypeRow& type : kMovieTypes)
        also(design::kMainformControls, "MediaType", type.caption);
    for (const MediaTypeRow& type : kSoundTypes)
        also(design::kMusicFormControls, "MediaType", type.caption);
    also(design::kMainformControls, "TimingLabel", "-12.34秒：Timing");
    also(design::kMainformControls, "FileNumberLabel", "99999 / 99999");
    also(design::kSettingFormControls, "MessageLabel", "設定を確定しました");
}

TEST_F(ControlsTest, ALongPathIsCutBeforeTheSignThatStandsInItsBox) {
    const std::string path(300, 'W');
    const auto inkInCorner = [] {
        const QImage corner = Look("Mainform", "LoopLabel");
        int dark = 0;
        for (int y = 0; y < corner.height(); ++y)
            for (int x = 0; x < corner.width(); ++x)
                dark += corner.pixelColor(x, y).lightness() < 200 ? 1 : 0;
        return dark;
    };
    Do([&] { Get<StaticText>("LoopLabel")->SetText("1"); });
    const int signAlone = inkInCorner();
    Do([&] { Get<StaticText>("DirLabel")->SetText(path); });
    EXPECT_EQ(inkInCorner(), signAlone);
    Do([&] { Get<StaticText>("LoopLabel")->SetText(""); });
    EXPECT_GT(inkInCorner(), signAlone) << "without the sign the whole box is the path's";
    EXPECT_EQ(Find<QLabel>("Mainform", "DirLabel")->text().toStdString(), path)
        << "assistive tools read all of it";
}

TEST_F(ControlsTest, AButtonReportsClicksAndIsPressedOnlyByItsControl) {
    int clicks = 0;
    Get<BevelButton>("Fold2")->OnAction = [&] { ++clicks; };
    auto* button = Find<QAbstractButton>("Mainform", "Fold2");
    const QImage raised = Look("Mainform", "Fold2");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(button->isChecked());
    PressByTool(*button);
    EXPECT_TRUE(Until([&] { return clicks == 2; }));
    EXPECT_FALSE(button->isChecked());

    Do([&] { Get<BevelButton>("Fold2")->SetValue(true); });
    EXPECT_TRUE(button->isChecked());
    EXPECT_NE(Look("Mainform", "Fold2"), raised);
    Do([&] { Get<BevelButton>("Fold2")->SetEnabled(false); });
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
}

TEST_F(ControlsTest, AToolTipShowsItsPathInLinesThatStayOnTheOperatorsDisplay) {
    const auto shown = [&](const std::string& path) {
        Do([&] { Get<BevelButton>("Fold1")->SetHelpTag(path); });
        QTextDocument tip;
        tip.setHtml(Find("Mainform", "Fold1")->toolTip());
        return tip.toPlainText();
    };
    EXPECT_EQ(shown("Root:R & B:"), QStringLiteral("Root:R & B:"));
    EXPECT_EQ(shown("Root:a\xFF:<b>&"), QStringLiteral("Root:a\uFFFD:<b>&"));
    EXPECT_EQ(shown("Root:a  b:"), QStringLiteral("Root:a  b:"));
    EXPECT_EQ(shown(""), QString());
    const std::string path = "Root:" + std::string(100, 'W') + ":folder:" + std::string(20, 'i') + ":";
    const QStringList lines = shown(path).split(QLatin1Char('\n'));
    EXPECT_GT(lines.size(), 2);
    EXPECT_EQ(lines.join(QString()).toStdString(), path);
    for (const QString& line : lines)
        EXPECT_LE(QFontMetrics(QToolTip::font()).horizontalAdvance(line), 480);
}

TEST_F(ControlsTest, ALongPathInALockedFieldShowsBothItsEnds) {
    Do([] { Instance<SettingShow>()->Show(); });
    auto field = Instance<SettingShow>()->Control<EditField>("Folder1_Edit");
    const auto look = [&](const std::string& path) {
        Do([&] { field->SetText(path); });
        return Look("SettingForm", "Folder1_Edit");
    };
    const std::string middle(200, 'm');
    EXPECT_NE(look("Root:a" + middle + ":b:"), look("Root:a" + middle + ":c:"));
    EXPECT_NE(look("Root:a" + middle + ":b:"), look("Root:x" + middle + ":b:"));
    EXPECT_EQ(look("Root:a" + middle + ":b:"), look("Root:a" + middle + "n" + middle + ":b:"));
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
    EXPECT_EQ(qobject_cast<QProgressBar*>(widget)->value(), 50);
}

TEST_F(ControlsTest, ControlsShowWithTheirPageOnly) {
    int changes = 0;
    Get<TabPanel>("ListTab")->OnChange = [&] { ++changes; };
    auto* tabs = Find<QTabBar>("Mainform", "ListTab.Tabs");
    QTest::mouseClick(tabs, Qt::LeftButton, Qt::NoModifier, tabs->tabRect(1).center());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Get<TabPanel>("ListTab")->Value(), 1);
    EXPECT_TRUE(Find("Mainform", "mStrGrid")->isVisible());
    EXPECT_FALSE(Find("Mainform", "StrGrid")->isVisible());
    EXPECT_FALSE(Find("Mainform", "mCountLabel")->isVisible()) << "hidden by its own Visible";
    Do([&] { Get<TabPanel>("ListTab")->SetValue(0); });
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_TRUE(Find("Mainform", "StrGrid")->isVisible());
}

class SettingControlsTest : public ControlsTest {
protected:
    void SetUp() override {
        ControlsTest::SetUp();
        Do([] { Instance<SettingShow>()->Show(); });
        m_setting = Instance<SettingShow>();
    }
    Ref<SettingShow> m_setting;
};

TEST_F(SettingControlsTest, ATickFollowsItsControl) {
    auto box = m_setting->Control<CheckBox>("FullScreen_Check");
    auto* widget = Find<QAbstractButton>("SettingForm", "FullScreen_Check");
    int actions = 0;
    box->OnAction = [&] { ++actions; };
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, 10));
    EXPECT_FALSE(box->Value()) << "it is disabled";
    Do([&] { box->SetEnabled(true); });
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, 10));
    EXPECT_TRUE(box->Value());
    EXPECT_TRUE(widget->isChecked());
    EXPECT_EQ(actions, 1);
    PressByTool(*widget);
    EXPECT_TRUE(Until([&] { return actions == 2; }));
    EXPECT_FALSE(box->Value());
    EXPECT_FALSE(widget->isChecked());
    box->OnAction = [&] { box->SetValue(false); }; // a handler that puts the box back
    Do([&] { box->SetValue(false); });
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, 10));
    EXPECT_FALSE(widget->isChecked());
}

TEST_F(SettingControlsTest, WhatAToolPressesAsTheWindowGoesIsLeftAlone) {
    int actions = 0;
    Do([&] {
        m_setting->Control<CheckBox>("FullScreen_Check")->SetEnabled(true);
        m_setting->Control<CheckBox>("FullScreen_Check")->OnAction = [&] { ++actions; };
        m_setting->Control<BevelButton>("Folder1_Bevel")->OnAction = [&] { ++actions; };
    });
    Do([&] { m_setting->Close(); });
    m_setting = nullptr; // the window goes from the loop, ahead of what the presses post
    for (const char* name : {"FullScreen_Check", "Folder1_Bevel"})
        PressByTool(*Find("SettingForm", name));
    Settle();
    EXPECT_EQ(actions, 0);
}

TEST_F(SettingControlsTest, APopupOffersItsRowsAndReportsAChoice) {
    auto popup = m_setting->Control<PopupMenu>("FreeSeek_Popup");
    int changes = 0;
    Do([&] {
        for (const char* row : {"1分", "1分30秒", "2分"})
            popup->AddRow(row);
        popup->OnChange = [&] { ++changes; };
    });
    auto* box = Find<QComboBox>("SettingForm", "FreeSeek_Popup");
    EXPECT_EQ(box->count(), 3);
    EXPECT_EQ(box->currentIndex(), -1);
    Do([&] { popup->SetListIndex(1); });
    EXPECT_EQ(box->currentText(), QStringLiteral("1分30秒"));
    EXPECT_EQ(changes, 1);
    box->setCurrentIndex(2);
    EXPECT_EQ(popup->ListIndex(), 2);
    EXPECT_EQ(changes, 2);
}

TEST_F(SettingControlsTest, ArrowsAndFields) {
    auto arrows = m_setting->Control<UpDownArrows>("UpDownArrow");
    int number = 1;
    arrows->OnUp = [&] { ++number; };
    arrows->OnDown = [&] { number -= 10; };
    QTest::mouseClick(Find("SettingForm", "UpDownArrow.Up"), Qt::LeftButton);
    EXPECT_EQ(number, 2);
    QTest::mouseClick(Find("SettingForm", "UpDownArrow.Down"), Qt::LeftButton);
    EXPECT_EQ(number, -8);

    auto field = m_setting->Control<EditField>("Folder1_Edit");
    auto* line = Find<QLineEdit>("SettingForm", "Folder1_Edit");
    Do([&] { field->SetText("Root:\xE3\x83:x"); });
    EXPECT_EQ(line->text(), QStringLiteral("Root:\uFFFD\uFFFD:x"));
    EXPECT_EQ(field->Text(), "Root:\xE3\x83:x") << "shown otherwise, kept as it is";
    Do([&] { field->SetEnabled(true); });
    line->setFocus();
    QTest::keyClick(line, Qt::Key_End);
    QTest::keyClicks(line, QStringLiteral("y"));
    EXPECT_EQ(field->Text(), line->text().toStdString());
}

} // namespace

} // namespace kirolane::tests
