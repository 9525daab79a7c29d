#pragma once

#include "contract/menubar.h"

#include <memory>

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

private:
    std::shared_ptr<class MenuBar> m_menuBar;
};

/// Ends the event loop with that exit status once the running handler ends; no event follows. The first call
/// counts.
void Quit(int status);

} // namespace kirolane
