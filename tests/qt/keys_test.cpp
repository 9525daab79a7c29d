#include "backends/qt/convert.h"
#include "backends/qt/shortcuts.h"
#include "contract/bevelbutton.h"
#include "contract/menuitem.h"
#include "contract/tabpanel.h"
#include "qt_test.h"
#include "support/document.h"

#include <qpa/qwindowsysteminterface.h>

namespace kirolane::tests {

namespace {

class KeysTest : public QtTest {
protected:
    void SetUp() override {
        QtTest::SetUp();
        Do([] { Instance<MonitorShow>()->Hide(); }); // it has items of its own
        m_console->TakeLog();
    }
    static QAction* Command(const char* name) {
        return Find("Mainform")->findChild<QAction*>(QString::fromLatin1(name));
    }
    Names Commands(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Press(key, modifiers);
        return m_console->TakeLog();
    }
};

TEST_F(KeysTest, TheDocumentTellsEveryMenuAndKeyAndADesktopThatTakesTheFirstShowsTheSecond) {
    qunsetenv("XDG_CURRENT_DESKTOP");
    const auto told = DocumentRows("keys.md", 4);
    auto line = told.begin();
    for (const MenuTable& menu : kMenus)
        for (const MenuRow& row : menu.rows) {
            if (!IsCommand(row))
                continue;
            ASSERT_NE(line, told.end()) << row.name;
            std::vector<std::string> cells{std::string(row.text.substr(row.text.starts_with('&') ? 1 : 0)),
                                           "", ""};
            int cell = 0;
            for (const QKeySequence& keys : qt::KeysOf(row.shortcut))
                if (keys[0].key() != Qt::Key_Enter)
                    cells.at(++cell) = keys.toString(QKeySequence::NativeText).toStdString();
            EXPECT_EQ(std::vector(line->begin(), line->begin() + 3), cells);
            EXPECT_EQ(line++->at(3).ends_with("(console only)"), row.where == Where::Console) << row.name;
        }
    EXPECT_EQ(line, told.end());
    const std::tuple<const char*, const char*, const char*> shown[] = {
        {"ubuntu:GNOME", "Control+n", "Ctrl+Shift+N"},
        {"KDE", "Control+n", "Super+N"},
        {"X-Cinnamon", "Option+space", "Shift+Space"},
        {"LXDE", "Shift+Option+right", "Alt+Shift+L"}};
    for (const auto& [desktop, given, key] : shown) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(qt::KeysOf(given).front().toString(QKeySequence::NativeText), key);
        EXPECT_EQ(qt::KeysOf(given).size(), 2);
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
}

TEST_F(KeysTest, AHeldKeyRepeatsStepsOnly) {
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, std::size_t, const char*> rows[] = {
        {Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier, 3, "Frame5UpKey"},
        {Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier, 3, "Frame5UpKey"},
        {Qt::Key_Left, Qt::ShiftModifier, 3, "SpeedDown"},
        {Qt::Key_Z, Qt::ShiftModifier, 1, "LoopKey"},
        {Qt::Key_Space, Qt::NoModifier, 1, "PlayStatusChangeKey"},
    };
    for (const auto& [key, modifiers, times, name] : rows) {
        for (const bool again : {false, true, true}) {
            QWindowSystemInterface::handleKeyEvent(QGuiApplication::focusWindow(), QEvent::KeyPress, key,
                                                   modifiers, {}, again);
            Settle();
        }
        EXPECT_EQ(m_console->TakeLog(), Names(times, name));
    }
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
        m_console->MenuItem("OpenKey")->SetText("開く");
        m_console->MenuItem("MuteKey")->SetVisible(false);
        m_console->MenuItem("AltX_Key")->SetEnabled(false);
        m_console->SetMenuBarVisible(false);
    });
    EXPECT_FALSE(Command("AltX_Key")->isEnabled() || Command("MuteKey")->isVisible());
    EXPECT_EQ(Commands(Qt::Key_Return), Names()) << "the press itself brings the items' enabling up to date";
    EXPECT_FALSE(Command("OpenKey")->isEnabled());
    EXPECT_EQ(Command("OpenKey")->text(), QStringLiteral("開く\t") + QKeySequence(Qt::Key_Return).toString());
    EXPECT_EQ(Commands(Qt::Key_Return), Names{"mOpenKey"}) << "of the other item, the bar shown or not";
}

TEST_F(KeysTest, WhatIsNoCommandIsReachedWithoutAPointer) {
    Names log;
    for (const char* name : {"Fold3", "mFold3", "mFold99"})
        Get<BevelButton>(name)->OnAction = [&log, name] { log.emplace_back(name); };
    const auto pressed = [&](const Names& names) { return Until([&] { return log == names; }); };
    Press(Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(pressed({"Fold3"}));
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Get<TabPanel>("ListTab")->Value(), 1);
    Press(Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(pressed({"Fold3", "mFold3"}));
    Press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(pressed({"Fold3", "mFold3", "mFold99"}));
    Press(Qt::Key_F10);
    EXPECT_TRUE(Until([] { return QApplication::activePopupWidget() != nullptr; }));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);

    auto form = ShowForm<SettingShow>();
    ASSERT_TRUE(Until([&] { return form->Active(); }));
    QSet<QString> reached;
    for (int step = 0; step < 40; ++step, Press(Qt::Key_Tab))
        if (const QWidget* widget = Find("SettingForm")->focusWidget())
            reached.insert(widget->objectName());
    for (const ControlDesign& row : design::kSettingFormControls)
        EXPECT_EQ(reached.contains(qt::ToText(row.name)),
                  (row.kind == ControlKind::BevelButton && !row.name.starts_with('m')) ||
                      row.name == "FreeSeek_Popup")
            << row.name;
    EXPECT_TRUE(reached.contains("UpDownArrow.Down") && reached.contains("ListTab.Tabs"));
    Get<BevelButton, SettingShow>("SettingButton")->OnAction = [&] { log = {"saved"}; };
    while (Find("SettingForm")->focusWidget()->objectName() != "SettingButton")
        Press(Qt::Key_Tab);
    Press(Qt::Key_Space);
    EXPECT_TRUE(pressed({"saved"}));
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
}

} // namespace

} // namespace kirolane::tests
