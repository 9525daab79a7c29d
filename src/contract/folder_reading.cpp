#include "contract/folder_reading.h"

#include "contract/backend/host.h"
#include "contract/core/folder_snapshot.h"
#include "contract/core/runtime.h"
#include "contract/thread.h"

#include <thread>

namespace kirolane {

/// What the worker and the waiting thread share. Whoever leaves first leaves it to the other.
class FolderReadingJob {
public:
    std::string path;
    std::shared_ptr<const FolderSnapshot> snapshot; ///< null for nil
    std::string cause;
    Thread* waiter = nullptr; ///< null once the awaiting body is gone; main thread only
};

ReadFolder::ReadFolder(std::string path) : m_job(std::make_shared<FolderReadingJob>()) {
    m_job->path = std::move(path);
}

ReadFolder::~ReadFolder() {
    m_job->waiter = nullptr;
}

void ReadFolder::await_suspend(std::coroutine_handle<>) {
    auto& runtime = Runtime::Current();
    m_job->waiter = runtime.Threads().InTurn();
    m_job->waiter->SetWaiting(true);
    // Detached: a mount that hangs holds up neither a killed scan nor the end of the program. The runtime
    // outlives every worker that it hears of again (Mailbox::WorkerDone).
    runtime.Mail().WorkerStarts();
    std::thread([job = m_job, &runtime] {
        const auto& files = runtime.Files();
        const auto isFolder = [&](const std::string& path) { return files.Kind(path) == FileKind::Folder; };
        const std::string native =
            ResolveFolderPath(job->path, files.ApplicationFolder(), isFolder, job->cause);
        if (!native.empty()) {
            auto snapshot = FolderSnapshot::Read(files, native, job->cause);
            job->snapshot = std::make_shared<const FolderSnapshot>(std::move(snapshot));
        }
        runtime.Mail().WorkerDone([job] {
            if (job->waiter != nullptr)
                job->waiter->SetWaiting(false);
        });
    }).detach();
}

FolderReading ReadFolder::await_resume() {
    auto& runtime = Runtime::Current();
    if (m_job->snapshot == nullptr) {
        runtime.Failures().NoteFile(m_job->path, m_job->cause);
        return {};
    }
    if (!m_job->cause.empty())
        WriteErrorLine(m_job->snapshot->NativePath() + ": " + m_job->cause);
    auto scope = std::make_shared<const FolderScope>(m_job->snapshot);
    runtime.Readings().Register(scope);
    return {Ref(std::make_shared<FolderItem>(m_job->snapshot)), std::move(scope)};
}

} // namespace kirolane
