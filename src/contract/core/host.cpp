#include "contract/backend/host.h"

#include "contract/core/runtime.h"
#include "contract/window.h"

namespace kirolane::host {

bool Exists() {
    return Runtime::Exists();
}

void RunPosted() {
    Runtime::Current().RunPosted();
}

bool RunIdleSlice() {
    return Runtime::Current().RunIdleSlice();
}

bool WorkersUnderWay() {
    return Runtime::Current().Mail().WorkersUnderWay() > 0;
}

void ReportScreensChanged() {
    Runtime::Current().ReportScreensChanged();
}

std::shared_ptr<Window> Console() {
    return Runtime::Current().Forms().First(WindowRole::Console);
}

bool FolderAnswers(const std::string& nativePath) {
    return Runtime::Current().Looks().Answers(nativePath);
}

} // namespace kirolane::host
