#pragma once

#include "contract/folderitem.h"

#include <coroutine>
#include <memory>
#include <string>

namespace kirolane {

class FolderReadingJob;
class FolderScope;

/// What `co_await ReadFolder(path)` gives: the folder, or nil as GetFolderItem would, and the life of what
/// was read. While it is kept, the folder, its children and their kinds answer from one reading, without a
/// call to the system; keep it for the length of a scan. The folder alone does not prolong that: once `scope`
/// is gone, GetFolderItem asks the system again.
struct FolderReading {
    Ref<FolderItem> folder;
    std::shared_ptr<const FolderScope> scope;
};

/// Reads a folder on a worker while the cooperative thread that awaits it is suspended. A thread killed in
/// the wait leaves the result unused. Only within a Thread's body.
class ReadFolder {
public:
    /// `path` as for GetFolderItem.
    explicit ReadFolder(std::string path);
    ~ReadFolder();
    ReadFolder(const ReadFolder&) = delete;
    ReadFolder& operator=(const ReadFolder&) = delete;

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<>);
    FolderReading await_resume();

private:
    std::shared_ptr<FolderReadingJob> m_job;
};

} // namespace kirolane
