#include "contract/application.h"

#include "contract/core/runtime.h"

namespace kirolane {

Application::Application() {
    Runtime::Current().SetApplication(this);
}

Application::~Application() {
    if (Runtime::Exists())
        Runtime::Current().SetApplication(nullptr);
}

void Quit(int status) {
    Runtime::Current().Quit(status);
}

} // namespace kirolane
