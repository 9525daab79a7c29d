#pragma once

#include "contract/backend/filesystem.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace kirolane {

/// Asks the files back end on threads of their own, so that a medium that does not answer, a mount whose
/// server has gone, holds up a handler for a moment only. A thread that gets no answer is left to itself, and
/// nothing waits for it, the end of the program neither; until it comes back nobody is sent after that path
/// again. Main thread.
class Lookout {
public:
    explicit Lookout(const FileSystem& files);

    /// A handler begins, or a turn of threads: it has patience of its own, about a second for all the folders
    /// that it asks for and five for files.
    void BeginHandler();

    /// A folder that does not answer in time counts as there, and one line on standard error says so. One
    /// that was there stays there until the handler is over: lines of the settings name the same one many
    /// times.
    [[nodiscard]] bool IsFolder(const std::string& nativePath);
    /// False, with a cause, for what does not answer in time.
    [[nodiscard]] bool IsReadableFile(const std::string& nativePath, std::string& cause);
    /// What can be listed there, a folder, or read, a file in a folder that can be listed. Else Missing, with
    /// a cause, also for what does not answer in a folder's time.
    [[nodiscard]] FileKind Readable(const std::string& nativePath, std::string& cause);
    /// Whether anything is known of it in time, be it that it is not there.
    [[nodiscard]] bool Answers(const std::string& nativePath);

private:
    using Patience = std::chrono::nanoseconds;
    struct Errands;

    template <class Answer>
    std::optional<Answer> Ask(const std::string& path, std::function<Answer()> question, Patience& patience);

    const FileSystem& m_files;
    Patience m_forFolders{};
    Patience m_forFiles{};
    std::set<std::string> m_folders;    ///< that this handler has found
    std::shared_ptr<Errands> m_errands; ///< shared with the threads, which may outlive this
};

} // namespace kirolane
