#include "contract/bevelbutton.h"
#include "contract/checkbox.h"
#include "contract/editfield.h"
#include "contract/listbox.h"
#include "contract/popupmenu.h"
#include "contract/progressbar.h"
#include "contract/statictext.h"
#include "contract/tabpanel.h"
#include "contract/updownarrows.h"
#include "qt_test.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace kirolane::tests {

namespace {

class ControlsTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        ShowForm<SettingShow>();
    }
    template <class T> static Ref<T> Setting(std::string_view name) { return Get<T, SettingShow>(name); }
    /// What an assistive tool offers first for the widget, or a press though a disabled one offers nothing.
    static void PressByTool(QWidget* widget) {
        auto* actions = QAccessible::queryAccessibleInterface(widget)->actionInterface();
        const QStringList names = actions->actionNames();
        actions->doAction(names.isEmpty() ? QAccessibleActionInterface::pressAction() : names.constFirst());
    }
};

TEST_F(ControlsTest, APressByHandOrByAToolIsReportedOnceAndTheLookIsTheControls) {
    Names log;
    auto button = Get<BevelButton>("Fold2");
    auto* box = Setting<CheckBox>("FullScreen_Check").operator->();
    button->OnAction = [&] { log.emplace_back("pressed"); };
    box->OnAction = [&] { log.emplace_back(box->Value() ? "on" : "off"); };
    Setting<UpDownArrows>("UpDownArrow")->OnUp = [&] { log.emplace_back("up"); };
    Setting<UpDownArrows>("UpDownArrow")->OnDown = [&] { log.emplace_back("down"); };
    const std::tuple<const char*, const char*, Names> rows[] = {
        {"Mainform", "Fold2", {"pressed", "pressed"}},
        {"SettingForm", "FullScreen_Check", {"on", "off"}},
        {"SettingForm", "UpDownArrow.Up", {"up", "up"}},
        {"SettingForm", "UpDownArrow.Down", {"down", "down"}}};
    for (const bool enabled : {true, false}) {
        Do([&] {
            button->SetEnabled(enabled);
            box->SetEnabled(enabled);
            Setting<UpDownArrows>("UpDownArrow")->SetEnabled(enabled);
        });
        for (const auto& [form, name, wanted] : rows) {
            auto* widget = Find<QAbstractButton>(form, name);
            Click(widget, {8, 8});
            PressByTool(widget);
            EXPECT_TRUE(Until([&] { return !enabled || log.size() >= 2; }));
            Settle();
            EXPECT_EQ(std::exchange(log, {}), enabled ? wanted : Names()) << name;
            EXPECT_FALSE(widget->isChecked()) << name;
        }
    }
    Do([&] { box->SetEnabled(true); });
    auto* tick = Find<QAbstractButton>("SettingForm", "FullScreen_Check");
    Do([] { Instance<SettingShow>()->Close(); }); // it goes from the loop, ahead of what the press posts
    PressByTool(tick);
    Settle();
    EXPECT_EQ(log, Names());
}

QStringList g_told; ///< names of objects that a screen reader was told to have another name

TEST_F(ControlsTest, AScreenReaderFindsRolesKeysRowsAndMarksAndIsNotToldOfWhatCountsTheTime) {
    auto sound = ShowForm<MusicShow>();
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::NameChanged && event->object() != nullptr)
            g_told << event->object()->objectName();
    });
    const auto of = [](QObject* object) { return QAccessible::queryAccessibleInterface(object); };
    g_told.clear();
    Do([&] {
        Get<StaticText>("TimingLabel")->SetText("+1秒：Timing");
        Get<StaticText>("PosTIme")->SetText("00：00：01");
        Get<StaticText>("PlayModeLabel")->SetText("再生中");
        sound->SetTitle("00：00：01");
    });
    EXPECT_EQ(g_told, QStringList{"PlayModeLabel"});
    EXPECT_EQ(of(Find("MusicForm"))->text(QAccessible::Name), "00：00：01");
    EXPECT_EQ(of(Find("Mainform", "TimingLabel"))->text(QAccessible::Name), "+1秒：Timing");
    EXPECT_EQ(of(Find("SettingForm"))->role(), QAccessible::Dialog);
    auto* folder = of(Find("Mainform", "Fold2"));
    EXPECT_EQ(folder->actionInterface()->keyBindingsForAction({}), QStringList({"", "", "Alt+2"}));
    auto button = Get<BevelButton>("Fold2");
    Do([&] { button->SetValue(true), button->SetHelpTag("Root:a<b:"); });
    EXPECT_EQ(folder->text(QAccessible::Description), "Root:a<b:");
    EXPECT_TRUE(folder->role() == QAccessible::RadioButton && folder->state().checked);

    auto list = Get<Listbox>("StrGrid");
    Do([&] {
        list->SetCell(0, 0, "●");
        list->SetCell(0, 1, "a.mov");
        list->SetListIndex(0);
    });
    auto* row = of(Find("Mainform", "StrGrid"))->focusChild();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->text(QAccessible::Name), "a.mov") << "the row's other cells are read with it";
    EXPECT_EQ(row->text(QAccessible::Description), QString()) << "or they would be read twice";
    auto* menu = of(Find("Mainform")->findChild<QMenuBar*>())->child(1)->child(0); // which was never opened
    const auto spoken = [&](int item) {
        return menu->child(item)->text(QAccessible::Name) + ' ' +
               menu->child(item)->actionInterface()->keyBindingsForAction({}).value(2);
    };
    EXPECT_EQ(spoken(0), "ファイルを開く Return"); // its key belongs to another item
    EXPECT_EQ(spoken(2), "停止 Super+B");
    m_console->TakeLog();
    menu->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_console->TakeLog(), Names{"mStopKey"});
    EXPECT_EQ(menu->child(2)->parent(), menu);
    QAccessible::installUpdateHandler(nullptr);
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

TEST_F(ControlsTest, TabsAndPopupsReportWhatAPersonTurnsToOnce) {
    std::vector<int> changes;
    auto panel = Get<TabPanel>("ListTab");
    auto popup = Setting<PopupMenu>("FreeSeek_Popup");
    auto* tabs = Find<QTabBar>("Mainform", "ListTab.Tabs");
    auto* box = Find<QComboBox>("SettingForm", "FreeSeek_Popup");
    Do([&] {
        for (const char* row : {"1分", "1分30秒", "2分"})
            popup->AddRow(row);
    });
    EXPECT_EQ(box->currentIndex(), -1);
    panel->OnChange = [&] { changes.push_back(panel->Value()); };
    popup->OnChange = [&] { changes.push_back(popup->ListIndex()); };
    Click(tabs, tabs->tabRect(1).center());
    box->setCurrentIndex(2);
    EXPECT_EQ(changes, (std::vector<int>{1, 2}));
    Do([&] {
        panel->SetValue(0);
        popup->SetListIndex(1);
    });
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(box->currentText(), QStringLiteral("1分30秒"));
    EXPECT_EQ(changes.size(), 4U);
}

TEST_F(ControlsTest, AFieldKeepsItsBytesAndIsTypedIn) {
    auto field = Setting<EditField>("Folder1_Edit");
    auto* line = Find<QLineEdit>("SettingForm", "Folder1_Edit");
    Do([&] { field->SetText("Root:\xE3\x83:x"); });
    EXPECT_EQ(line->text(), QStringLiteral("Root:\uFFFD\uFFFD:x"));
    EXPECT_EQ(field->Text(), "Root:\xE3\x83:x") << "shown otherwise, kept as it is";
    Do([&] {
        field->SetText("");
        field->SetEnabled(true);
        field->SetFocus();
    });
    ASSERT_TRUE(Until([&] { return Instance<SettingShow>()->Active() && !m_console->Active(); }));
    Press(Qt::Key_A);
    Press(Qt::Key_B, Qt::ShiftModifier); // without Shift or in the console these are commands
    EXPECT_EQ(field->Text().size(), 2U);
    EXPECT_EQ(field->Text(), line->text().toStdString());
}

} // namespace

} // namespace kirolane::tests
