#include "logic/shell/start.h"

#include "contract/implicit_instance.h"
#include "logic/shell/mainform.h"
#include "logic/shell/menu.h"

namespace kirolane {

std::unique_ptr<App> StartKirolane() {
    auto app = std::make_unique<App>();
    app->SetMenuBar(Menu::Instance());
    Instance<Mainform>();
    return app;
}

} // namespace kirolane
