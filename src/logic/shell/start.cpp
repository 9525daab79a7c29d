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

std::string SettingsFile() {
    return Instance<Mainform>()->SettingsItem()->NativePath();
}

void App::Event_OpenDocument(const Ref<FolderItem>& folder, const std::string& name) {
    Instance<Mainform>()->ListDocument(folder, name);
}

} // namespace kirolane
