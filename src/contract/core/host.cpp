#include "contract/backend/host.h"

#include "contract/application.h"
#include "contract/core/colon_path.h"
#include "contract/core/runtime.h"
#include "contract/folderitem.h"
#include "contract/window.h"

#include <utility>

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

void OpenDocument(const std::string& nativePath) {
    auto& runtime = Runtime::Current();
    runtime.Looks().BeginHandler();
    std::string cause;
    const FileKind kind = runtime.Looks().Readable(nativePath, cause);
    if (kind == FileKind::Missing) {
        WriteErrorLine(nativePath + ": " + cause);
        return;
    }
    const auto [folder, name] =
        kind == FileKind::Folder ? std::pair(nativePath, std::string()) : SplitNativePath(nativePath);
    runtime.App()->Event_OpenDocument(Ref(std::make_shared<FolderItem>(folder)), SwapSeparators(name));
}

bool FolderAnswers(const std::string& nativePath) {
    return Runtime::Current().Looks().Answers(nativePath);
}

} // namespace kirolane::host
