#pragma once

#include "contract/folderitem.h"
#include "contract/menubar.h"

#include <memory>
#include <string>

namespace kirolane {

/// Base of the application object. There is one; making it makes it known to the runtime.
class Application {
public:
    Application();
    virtual ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// The bar from which the windows take theirs; set once at start.
    [[nodiscard]] const std::shared_ptr<class MenuBar>& MenuBar() const { return m_menuBar; }
    void SetMenuBar(std::shared_ptr<class MenuBar> bar) { m_menuBar = std::move(bar); }

    /// The program was started with this folder or, where `name` is not empty, with that file in it. Both can
    /// be read. Runs at the end of the start, before anything is shown.
    virtual void Event_OpenDocument(const Ref<FolderItem>& /*folder*/, const std::string& /*name*/) {}

private:
    std::shared_ptr<class MenuBar> m_menuBar;
};

/// Ends the event loop with that exit status once the running handler ends; no event follows. The first call
/// counts.
void Quit(int status);

} // namespace kirolane
