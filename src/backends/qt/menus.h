#pragma once

#include "backends/qt/link.h"
#include "contract/menubar.h"
#include "contract/window.h"

#include <memory>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QWidget;

namespace kirolane::qt {

/// A window's commands. Every item of its bar is an action of the window itself, so that the keys work where
/// no bar is to be seen; the console shows the bar as well.
class WindowCommands {
public:
    /// `bar` is null where no bar is shown. The actions belong to `window`.
    WindowCommands(Link<Window> link, QWidget& window, QMenuBar* bar);

    /// Shows what the window's bar holds now.
    void Update();

private:
    struct Command {
        std::shared_ptr<MenuItem> item;
        QAction* action;
    };

    void Build(const MenuBar& bar);
    void AddItem(QMenu& menu, const std::shared_ptr<MenuItem>& item);
    void UpdateCommand(const Command& command, bool ownsKey);

    Link<Window> m_link;
    QWidget& m_window;
    QMenuBar* m_bar;
    const MenuBar* m_built = nullptr;
    std::vector<std::unique_ptr<QMenu>> m_menus; ///< of a window without a visible bar too
    std::vector<Command> m_commands;
};

} // namespace kirolane::qt
