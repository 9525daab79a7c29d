#include "shell/start.h"

#include "platform/implicit_instance.h"
#include "shell/mainform.h"
#include "shell/menu.h"

namespace kirolane {

std::unique_ptr<App> StartKirolane() {
    auto app = std::make_unique<App>();
    app->SetMenuBar(Menu::Instance());
    Instance<Mainform>();
    return app;
}

} // namespace kirolane
