// Commands by key, whatever has the focus.

#include "backends/qt/shortcuts.h"
#include "contract/menuitem.h"
#include "contract/tabpanel.h"
#include "qt_test.h"

#include <qpa/qwindowsysteminterface.h>

#include <algorithm>
#include <fstream>

namespace kirolane::tests {

namespace {

class KeysTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        m_console->TakeLog();
    }
    static QAction* Command(const char* name) {
        return Find("Mainform")->findChild<QAction*>(QString::fromLatin1(name));
    }
    /// The commands that come of a key that goes down and repeats twice.
    Names Held(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        for (const bool again : {false, true, true}) {
            QWindowSystemInterface::handleKeyEvent(QGuiApplication::focusWindow(), QEvent::KeyPress, key,
                                                   modifiers, {}, again);
            Settle();
        }
        return m_console->TakeLog();
    }
    Names Commands(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Press(key, modifiers);
        return m_console->TakeLog();
    }
};

TEST_F(KeysTest, TheDocumentTellsEveryMenuAndKey) {
    Names wanted;
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows) {
            if (!IsCommand(row))
                continue;
            QStringList cells{QString::fromUtf8(row.text.data(), row.text.size()).remove('&'), {}, {}};
            int cell = 0;
            for (const QKeySequence& keys : qt::KeysOf(row.shortcut))
                if (keys[0].key() != Qt::Key_Enter)
                    cells[++cell] = keys.toString(QKeySequence::PortableText);
            QString text = "| " + cells.join(" | ") + " |";
            for (const auto& [name, shown] : std::initializer_list<std::pair<const char*, const char*>>{
                     {"Meta", "Super"}, {"Left", "←"}, {"Right", "→"}, {"Up", "↑"}, {"Down", "↓"}})
                text.replace(name, shown);
            wanted.push_back(text.toStdString() + (row.where == Where::Console ? " console only" : ""));
        }
    std::ifstream document(KIROLANE_KEYS_DOCUMENT);
    Names told;
    for (std::string line; std::getline(document, line);)
        if (const auto end = line.rfind('|', line.size() - 2);
            std::count(line.begin(), line.end(), '|') == 5 && line.find("---") == line.npos &&
            line.find("| Menu ") != 0)
            told.push_back(line.substr(0, end + 1) +
                           (line.find("(console only)", end) == line.npos ? "" : " console only"));
    EXPECT_EQ(told, wanted);
}

TEST_F(KeysTest, AHeldKeyRepeatsStepsOnly) {
    const auto times = [](std::size_t count, const char* name) { return Names(count, name); };
    EXPECT_EQ(Held(Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier), times(3, "Frame5UpKey"));
    EXPECT_EQ(Held(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier), times(3, "Frame5UpKey"));
    EXPECT_EQ(Held(Qt::Key_Left, Qt::ShiftModifier), times(3, "SpeedDown"));
    EXPECT_EQ(Held(Qt::Key_Z, Qt::ShiftModifier), times(1, "LoopKey"));
    EXPECT_EQ(Held(Qt::Key_Space), times(1, "PlayStatusChangeKey"));

    // A mouse is no held key, whatever was held when the keyboard went to another window.
    QMenu* menu = Find("Mainform")->findChild<QMenuBar*>()->actions().constFirst()->menu();
    QTest::mouseMove(Find("Mainform")); // a menu remembers where the pointer was
    menu->popup(QPoint(100, 100));
    Click(menu, menu->actionGeometry(Command("StopKey")).center());
    EXPECT_EQ(m_console->TakeLog(), Names{"StopKey"});
}

TEST_F(KeysTest, HeldKeysAreForgottenWithTheKeyboard) {
    QTest::keyPress(QGuiApplication::focusWindow(), Qt::Key_Left, Qt::ControlModifier); // a command takes it
    EXPECT_TRUE(m_windows->KeyDown(123));
    EXPECT_FALSE(m_windows->KeyDown(124) || m_windows->KeyDown(0));
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(m_windows->KeyDown(123));
    QTest::keyRelease(QGuiApplication::focusWindow(), Qt::Key_Left);
}

TEST_F(KeysTest, AListTakesNoTyping) {
    auto list = Get<Listbox>("StrGrid");
    Do([&] { list->SetCell(3, 1, "a.mov"); });
    auto* view = Find<QTableView>("Mainform", "StrGrid");
    Click(view->viewport(), view->visualRect(view->model()->index(1, 1)).center());
    const auto typed = [] { return QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled); };
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Period, Qt::Key_5})
        EXPECT_EQ(Commands(key), Names());
    EXPECT_EQ(list->ListIndex(), 1);
    EXPECT_FALSE(typed()) << "an input method would keep letters of commands for itself";
    Press(Qt::Key_Down);
    EXPECT_FALSE(typed());
}

TEST_F(KeysTest, ReturnOpensUnlessItIsDisabledThereAndTheKeypadHasASecond) {
    EXPECT_EQ(Commands(Qt::Key_Enter, Qt::KeypadModifier), Names{"OpenKey"});
    Do([&] {
        m_console->MenuItem("OpenKey")->SetAutoEnable(false);
        m_console->SetMenuBarVisible(false);
    });
    Press(Qt::Key_Return); // the first press brings the items' enabling up to date
    m_console->TakeLog();
    EXPECT_FALSE(Command("OpenKey")->isEnabled());
    EXPECT_EQ(Commands(Qt::Key_Return), Names{"mOpenKey"}) << "of the other item, the bar shown or not";
}

TEST_F(KeysTest, ItemsShowTextEnablingAndVisibility) {
    const QAction* item = Command("AltX_Key");
    EXPECT_EQ(item->text(), QStringLiteral("コンソールウィンドウを隠す"));
    EXPECT_EQ(item->shortcut(), QKeySequence(Qt::ALT | Qt::Key_X));
    EXPECT_TRUE(Command("mOpenKey")->text().endsWith(QKeySequence(Qt::Key_Return).toString()));
    Do([&] {
        m_console->MenuItem("AltX_Key")->SetText("コンソールウィンドウを表示する");
        m_console->MenuItem("AltX_Key")->SetEnabled(false);
        m_console->MenuItem("MuteKey")->SetVisible(false);
    });
    EXPECT_EQ(item->text(), QStringLiteral("コンソールウィンドウを表示する"));
    EXPECT_FALSE(item->isEnabled());
    EXPECT_FALSE(Command("MuteKey")->isVisible());
    EXPECT_EQ(Find("Mainform")->findChild<QMenuBar*>()->actions().size(), 3);
}

TEST_F(KeysTest, PlainArrowsGoToTheListThatIsSeen) {
    auto first = Get<Listbox>("StrGrid");
    auto second = Get<Listbox>("mStrGrid");
    Press(Qt::Key_Down); // nothing has been given the focus yet
    EXPECT_EQ(first->ListIndex(), 0);
    Do([&] {
        first->SetFocus();
        Get<TabPanel>("ListTab")->SetValue(1); // the focus is on a hidden page now
    });
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(first->ListIndex(), 0);
    EXPECT_EQ(second->ListIndex(), 1);
    Do([] { Get<TabPanel>("ListTab")->SetValue(0); });
    Press(Qt::Key_Down);
    EXPECT_EQ(first->ListIndex(), 1);
}

} // namespace

} // namespace kirolane::tests
