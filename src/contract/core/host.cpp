#include "contract/backend/host.h"

#include "contract/core/runtime.h"

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
    return Runtime::Current().Mail().WorkersUnderWay();
}

void ReportScreensChanged() {
    Runtime::Current().ReportScreensChanged();
}

std::vector<std::shared_ptr<Window>> Forms() {
    return Runtime::Current().Forms().All();
}

bool FolderAnswers(const std::string& nativePath) {
    return Runtime::Current().Looks().Answers(nativePath);
}

} // namespace kirolane::host
