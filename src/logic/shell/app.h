#pragma once

#include "contract/application.h"

namespace kirolane {

class App : public Application {
public:
    void Event_OpenDocument(const Ref<FolderItem>& folder, const std::string& name) override;
};

} // namespace kirolane
