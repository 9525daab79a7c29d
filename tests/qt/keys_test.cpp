// Commands by key, whatever has the focus.

#include "backends/qt/shortcuts.h"
#include "contract/editfield.h"
#include "contract/listbox.h"
#include "contract/menuitem.h"
#include "contract/tabpanel.h"
#include "logic/shell/menu_table.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>

#include <qpa/qwindowsysteminterface.h>

#include <fstream>

namespace kirolane::tests {

namespace {

using Names = std::vector<std::string>;

class KeysTest : public QtTest {
protected:
    void SetUp() override {
        m_console = StartWith<ConsoleShow>();
        m_console->TakeLog();
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

TEST_F(KeysTest, TheyComeWhileTheBarIsHidden) {
    Do([&] { m_console->SetMenuBarVisible(false); });
    Press(Qt::Key_Space);
    EXPECT_EQ(m_console->TakeLog(), Names{"PlayStatusChangeKey"});
}

TEST_F(KeysTest, TheDocumentTellsEveryMenuAndKey) {
    std::vector<std::string> wanted;
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows) {
            if (row.text == "-")
                continue;
            QStringList cells{QString::fromUtf8(row.text.data(), row.text.size()).remove('&'), {}, {}};
            int cell = 0;
            for (const QKeySequence& keys : qt::KeysOf(row.shortcut))
                if (keys[0].key() != Qt::Key_Enter)
                    cells[++cell] = keys.toString(QKeySequence::PortableText);
            QString text = "| " + cells.join(" | ") + " |";
            for (const auto& [name, shown] : std::initializer_list<std::pair<const char*, const char*>>{
                     {"Meta", "Super"}, {"Left", "←"}, {"Right", "→"}, {"Up", "↑"}, {"Down", "↓"}})
                text.replace(QLatin1String(name), QString::fromUtf8(shown));
            wanted.push_back(text.toStdString() + (row.where == Where::Console ? " console only" : ""));
        }
    std::ifstream document(KIROLANE_KEYS_DOCUMENT);
    std::vector<std::string> told;
    for (std::string line; std::getline(document, line);) {
        const auto end = line.rfind('|', line.size() - 2);
        if (std::count(line.begin(), line.end(), '|') == 5 && line.find("---") == line.npos &&
            line.find("| Menu ") != 0)
            told.push_back(line.substr(0, end + 1) +
                           (line.find("(console only)", end) == line.npos ? "" : " console only"));
    }
    EXPECT_EQ(told, wanted);
}

TEST_F(KeysTest, AHeldKeyRepeatsStepsOnly) {
    const auto hold = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        for (const bool again : {false, true, true}) {
            QWindow* window = QGuiApplication::focusWindow();
            QWindowSystemInterface::handleKeyEvent(window, QEvent::KeyPress, key, modifiers, {}, again);
            Settle();
        }
        QTest::keyRelease(QGuiApplication::focusWindow(), key, modifiers);
        return m_console->TakeLog();
    };
    Do([&] { m_console->Control<Listbox>("StrGrid")->SetFocus(); });
    const auto times = [](int count, const char* name) {
        return Names(static_cast<std::size_t>(count), name);
    };
    EXPECT_EQ(hold(Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier), times(3, "Frame5UpKey"));
    EXPECT_EQ(hold(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier), times(3, "Frame5UpKey"));
    EXPECT_EQ(hold(Qt::Key_Left, Qt::ShiftModifier), times(3, "SpeedDown"));
    EXPECT_EQ(hold(Qt::Key_Space, {}), times(1, "PlayStatusChangeKey"));
    EXPECT_EQ(hold(Qt::Key_Z, Qt::ShiftModifier), times(1, "LoopKey"));

    // A mouse is no held key, whatever was held when the keyboard went to another window.
    for (const bool again : {false, true})
        QWindowSystemInterface::handleKeyEvent(QGuiApplication::focusWindow(), QEvent::KeyPress,
                                               Qt::Key_Space, {}, {}, again);
    Settle();
    m_console->TakeLog();
    QMenu* menu = Find("Mainform")->findChild<QMenuBar*>()->actions().constFirst()->menu();
    QTest::mouseMove(Find("Mainform")); // a menu remembers where the pointer was
    menu->popup(QPoint(100, 100));
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                      menu->actionGeometry(Command("Mainform", "StopKey")).center());
    EXPECT_EQ(m_console->TakeLog(), Names{"StopKey"});
}

TEST_F(KeysTest, AListTakesNoTyping) {
    auto list = m_console->Control<Listbox>("StrGrid");
    Do([&] {
        list->SetCell(3, 1, "a.mov");
        list->SetFocus();
    });
    m_console->TakeLog();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Period, Qt::Key_5})
        Press(key);
    EXPECT_EQ(list->ListIndex(), -1);
    EXPECT_EQ(m_console->TakeLog(), Names());
    EXPECT_FALSE(QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled))
        << "an input method would keep letters of commands for itself";
    Press(Qt::Key_Down);
    EXPECT_FALSE(QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled));
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
