// Commands by key, whatever has the focus.

#include "platform/editfield.h"
#include "platform/listbox.h"
#include "platform/menuitem.h"
#include "platform/qt/shortcuts.h"
#include "platform/tabpanel.h"
#include "qt_test.h"
#include "shell/menu_table.h"
#include "show_forms.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>

namespace kirolane::tests {

namespace {

using Names = std::vector<std::string>;

class KeysTest : public QtTest {
protected:
    void SetUp() override {
        m_console = StartWith<ConsoleShow>();
        m_console->TakeLog();
    }
    /// Presses the key of every command of the menus; each must come once.
    static void PressAll(LoggedForm& form) {
        bool returned = false;
        for (const MenuTable& menu : kMenus)
            for (const MenuRow& row : menu.rows) {
                const auto keys = qt::ParseShortcut(row.shortcut);
                if (keys.isEmpty())
                    continue;
                form.TakeLog();
                const QKeyCombination key = keys.front()[0];
                Press(key.key(), key.keyboardModifiers());
                // "return" stands twice, and its first item has it.
                const bool again = row.shortcut == "return" && std::exchange(returned, true);
                EXPECT_EQ(form.TakeLog(), Names{again ? "OpenKey" : std::string(row.name)}) << row.shortcut;
            }
    }
    static QAction* Command(const std::string& window, const char* name) {
        return Find(window)->findChild<QAction*>(QString::fromLatin1(name));
    }

    Ref<ConsoleShow> m_console;
};

TEST_F(KeysTest, ANotationNamesItsKeys) {
    using qt::ParseShortcut;
    const auto first = [](const char* notation) { return ParseShortcut(notation).value(0); };
    EXPECT_EQ(first("Cmd+Option+left"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Left));
    EXPECT_EQ(first("Option+Control+down"), QKeySequence(Qt::ALT | Qt::META | Qt::Key_Down));
    EXPECT_EQ(first("Shift+b"), QKeySequence(Qt::SHIFT | Qt::Key_B));
    EXPECT_EQ(first("Cmd+,"), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    EXPECT_EQ(first("Cmd++"), QKeySequence(Qt::CTRL | Qt::Key_Plus));
    EXPECT_EQ(first("+"), QKeySequence(Qt::Key_Plus));
    EXPECT_EQ(first("F5"), QKeySequence(Qt::Key_F5));
    EXPECT_EQ(ParseShortcut("return"), (QList<QKeySequence>{Qt::Key_Return, Qt::Key_Enter}));
    for (const char* none : {"", "Hyper+x", "Cmd+nokey", "Cmd+"})
        EXPECT_TRUE(ParseShortcut(none).isEmpty()) << none;
}

TEST_F(KeysTest, EveryCommandComesOnceWhereverTheFocusIs) {
    PressAll(*m_console); // at the start nothing has been given the focus
    Do([&] { m_console->Control<Listbox>("StrGrid")->SetFocus(); });
    PressAll(*m_console);
    for (const char* name : {"Rate", "QTM_PosBar", "Fold3", "ListTab.Tabs", "VolumeProgress", "FileLabel"}) {
        QWidget* widget = Find("Mainform", name);
        widget->setEnabled(true);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(3, 5));
    }
    PressAll(*m_console);
}

TEST_F(KeysTest, TheyComeInAWindowWithoutABarToo) {
    Do([] { Instance<MonitorShow>()->Show(); });
    auto monitor = Instance<MonitorShow>();
    ASSERT_TRUE(Until([&] { return monitor->Active(); }));
    PressAll(*monitor);
    EXPECT_EQ(m_console->TakeLog().back(), "Deactivate") << "and nowhere else";
}

TEST_F(KeysTest, TheyComeWhileTheBarIsHidden) {
    Do([&] { m_console->SetMenuBarVisible(false); });
    Press(Qt::Key_Space);
    EXPECT_EQ(m_console->TakeLog(), Names{"PlayStatusChangeKey"});
}

TEST_F(KeysTest, TheKeypadHasTheSecondReturn) {
    QWindow* window = QGuiApplication::focusWindow();
    QTest::keyClick(window, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(m_console->TakeLog(), Names{"OpenKey"});
}

TEST_F(KeysTest, ADisabledItemLeavesASharedKeyToTheOther) {
    Do([&] { m_console->MenuItem("OpenKey")->SetAutoEnable(false); });
    Press(Qt::Key_Return); // the first press brings the items' enabling up to date
    m_console->TakeLog();
    EXPECT_FALSE(Command("Mainform", "OpenKey")->isEnabled());
    Press(Qt::Key_Return);
    EXPECT_EQ(m_console->TakeLog(), Names{"mOpenKey"});
}

TEST_F(KeysTest, ItemsShowTextEnablingAndVisibility) {
    const QAction* item = Command("Mainform", "AltX_Key");
    EXPECT_EQ(item->text(), QStringLiteral("コンソールウィンドウを隠す"));
    EXPECT_EQ(item->shortcut(), QKeySequence(Qt::ALT | Qt::Key_X));
    EXPECT_FALSE(item->autoRepeat());
    EXPECT_TRUE(Command("Mainform", "mOpenKey")->text().endsWith(QKeySequence(Qt::Key_Return).toString()));
    Do([&] {
        m_console->MenuItem("AltX_Key")->SetText("コンソールウィンドウを表示する");
        m_console->MenuItem("AltX_Key")->SetEnabled(false);
        m_console->MenuItem("MuteKey")->SetVisible(false);
    });
    EXPECT_EQ(item->text(), QStringLiteral("コンソールウィンドウを表示する"));
    EXPECT_FALSE(item->isEnabled());
    EXPECT_FALSE(Command("Mainform", "MuteKey")->isVisible());
    EXPECT_EQ(Find("Mainform")->findChild<QMenuBar*>()->actions().size(), 3);
}

TEST_F(KeysTest, AltAloneLeavesTheKeysWhereTheyAre) {
    Do([&] { m_console->Control<Listbox>("StrGrid")->SetFocus(); });
    const QWidget* before = QApplication::focusWidget();
    Press(Qt::Key_Alt);
    EXPECT_EQ(QApplication::focusWidget(), before);
    EXPECT_EQ(Find("Mainform")->findChild<QMenuBar*>()->activeAction(), nullptr);
}

TEST_F(KeysTest, PlainArrowsGoToTheListThatIsSeen) {
    auto first = m_console->Control<Listbox>("StrGrid");
    auto second = m_console->Control<Listbox>("mStrGrid");
    Press(Qt::Key_Down); // nothing has been given the focus yet
    EXPECT_EQ(first->ListIndex(), 0);
    Do([&] {
        first->SetFocus();
        m_console->Control<TabPanel>("ListTab")->SetValue(1); // the focus is on a hidden page now
    });
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(first->ListIndex(), 0);
    EXPECT_EQ(second->ListIndex(), 1);
    Do([&] { m_console->Control<TabPanel>("ListTab")->SetValue(0); });
    Press(Qt::Key_Down);
    EXPECT_EQ(first->ListIndex(), 1);
}

TEST_F(KeysTest, HeldKeysAreForgottenWithTheKeyboard) {
    QWindow* window = QGuiApplication::focusWindow();
    QTest::keyPress(window, Qt::Key_Left, Qt::ControlModifier); // a command takes the press itself
    EXPECT_TRUE(Windows().KeyDown(123));
    EXPECT_FALSE(Windows().KeyDown(124));
    EXPECT_FALSE(Windows().KeyDown(0));
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(Windows().KeyDown(123));
    QTest::keyRelease(window, Qt::Key_Left);
}

TEST_F(KeysTest, ATextFieldKeepsItsLetters) {
    Do([] {
        Instance<SettingShow>()->Show();
        Instance<SettingShow>()->Control<EditField>("Folder1_Edit")->SetEnabled(true);
        Instance<SettingShow>()->Control<EditField>("Folder1_Edit")->SetFocus();
    });
    ASSERT_TRUE(Until([] { return Instance<SettingShow>()->Active(); }));
    Press(Qt::Key_A);
    Press(Qt::Key_B, Qt::ShiftModifier);
    EXPECT_EQ(Instance<SettingShow>()->Control<EditField>("Folder1_Edit")->Text().size(), 2U);
}

} // namespace

} // namespace kirolane::tests
