#include "backends/qt/menus.h"

#include "backends/qt/convert.h"
#include "backends/qt/shortcuts.h"
#include "backends/qt/showapplication.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <set>
#include <string>

namespace kirolane::qt {

namespace {

QAction::MenuRole RoleOf(const MenuItem& item) {
    switch (item.Role()) {
    case MenuRole::About:
        return QAction::AboutRole;
    case MenuRole::Preferences:
        return QAction::PreferencesRole;
    case MenuRole::Quit:
        return QAction::QuitRole;
    case MenuRole::Plain:
        break;
    }
    return QAction::NoRole;
}

} // namespace

WindowCommands::WindowCommands(Link<Window> link, QWidget& window, QMenuBar* bar)
    : m_link(std::move(link)), m_window(window), m_bar(bar) {}

void WindowCommands::Update() {
    const Window* window = m_link.Get();
    if (window == nullptr || window->MenuBar() == nullptr)
        return;
    if (m_built != window->MenuBar().get())
        Build(*window->MenuBar());

    // Two actions of one key would both stay silent: the first that can act has it, the others only show it.
    std::set<std::string> taken;
    const auto showThose = [&](bool able) {
        for (const Command& command : m_commands)
            if ((command.item->Enabled() && command.item->Visible()) == able)
                UpdateCommand(command, taken.insert(command.item->KeyboardShortcut()).second);
    };
    showThose(true);
    showThose(false);
}

void WindowCommands::Build(const MenuBar& bar) {
    m_commands.clear();
    for (auto& menu : m_menus)
        menu.release()->deleteLater(); // one of its commands may be what led here
    m_menus.clear();
    m_built = &bar;
    for (const auto& item : bar.Menus()) {
        auto menu = std::make_unique<QMenu>(&m_window);
        m_commands.push_back({item, menu->menuAction()});
        if (m_bar != nullptr)
            m_bar->addMenu(menu.get());
        for (const auto& child : item->Children())
            AddItem(*menu, child);
        m_menus.push_back(std::move(menu));
    }
}

void WindowCommands::AddItem(QMenu& menu, const std::shared_ptr<MenuItem>& item) {
    if (!item->Children().empty()) {
        QMenu* sub = menu.addMenu(QString());
        m_commands.push_back({item, sub->menuAction()});
        for (const auto& child : item->Children())
            AddItem(*sub, child);
        return;
    }
    auto* action = menu.addAction(QString());
    m_commands.push_back({item, action});
    action->setObjectName(ToText(item->Name()));
    if (item->IsSeparator()) {
        action->setSeparator(true);
        return;
    }
    action->setMenuRole(RoleOf(*item));
    action->setShortcutContext(Qt::WindowShortcut);
    m_window.addAction(action);
    QObject::connect(action, &QAction::triggered, &m_window, [link = m_link, item] {
        if (!item->Repeats() && static_cast<ShowApplication*>(qApp)->KeyRepeated())
            return;
        if (auto* window = link.Get())
            window->ReportMenuChosen(item->Name());
    });
}

void WindowCommands::UpdateCommand(const Command& command, bool ownsKey) {
    const MenuItem& item = *command.item;
    QAction& action = *command.action;
    action.setVisible(item.Visible());
    action.setEnabled(item.Enabled());
    if (item.IsSeparator())
        return;
    const auto keys = KeysOf(item.KeyboardShortcut());
    QString text = ToText(item.Text());
    if (!ownsKey && !keys.isEmpty())
        text += QLatin1Char('\t') + keys.front().toString(QKeySequence::NativeText);
    if (action.text() != text)
        action.setText(text);
    const auto owned = ownsKey ? keys : QList<QKeySequence>();
    if (action.shortcuts() != owned)
        action.setShortcuts(owned);
    action.setAutoRepeat(item.Repeats());
}

} // namespace kirolane::qt
