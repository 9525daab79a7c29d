#include "contract/core/lookout.h"

#include "contract/core/colon_path.h"
#include "contract/messages.h"

#include <algorithm>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

namespace kirolane {

namespace {
constexpr std::chrono::milliseconds kForFolders{800};
constexpr std::chrono::milliseconds kForFiles{5000};
/// What each question gets, also after one that used all patience up: a disk that is well answers within it.
constexpr std::chrono::milliseconds kLeast{10};
} // namespace

struct Lookout::Errands {
    std::mutex mutex;
    std::set<std::string> paths; ///< asked for and not answered
};

Lookout::Lookout(const FileSystem& files) : m_files(files), m_errands(std::make_shared<Errands>()) {
    BeginHandler();
}

void Lookout::BeginHandler() {
    m_forFolders = kForFolders;
    m_forFiles = kForFiles;
    m_folders.clear();
}

template <class Answer>
std::optional<Answer> Lookout::Ask(const std::string& path, std::function<Answer()> question,
                                   Patience& patience) {
    {
        const std::lock_guard lock(m_errands->mutex);
        if (!m_errands->paths.insert(path).second)
            return std::nullopt;
    }
    std::packaged_task<Answer()> task([path, question = std::move(question), errands = m_errands] {
        Answer answer = question();
        const std::lock_guard lock(errands->mutex);
        errands->paths.erase(path);
        return answer;
    });
    auto answer = task.get_future();
    const auto begin = std::chrono::steady_clock::now();
    std::thread(std::move(task)).detach();
    const auto state = answer.wait_for(std::max<Patience>(patience, kLeast));
    patience -= std::min<Patience>(patience, std::chrono::steady_clock::now() - begin);
    if (state != std::future_status::ready)
        return std::nullopt;
    return answer.get();
}

bool Lookout::IsFolder(const std::string& nativePath) {
    if (m_folders.contains(nativePath))
        return true;
    const bool known = [&] {
        const std::lock_guard lock(m_errands->mutex);
        return m_errands->paths.contains(nativePath);
    }();
    const auto kind = Ask<FileKind>(
        nativePath, [nativePath, files = &m_files] { return files->Kind(nativePath); }, m_forFolders);
    if (!kind && !known)
        WriteErrorLine(nativePath + ": does not answer, and counts as there");
    if (kind == FileKind::Folder)
        m_folders.insert(nativePath);
    return kind.value_or(FileKind::Folder) == FileKind::Folder;
}

bool Lookout::IsReadableFile(const std::string& nativePath, std::string& cause) {
    using Found = std::pair<bool, std::string>;
    const auto found = Ask<Found>(
        nativePath,
        [nativePath, files = &m_files] {
            Found answer;
            answer.first = files->IsReadableFile(nativePath, answer.second);
            return answer;
        },
        m_forFiles);
    cause = found ? found->second : "does not answer in time";
    return found && found->first;
}

FileKind Lookout::Readable(const std::string& nativePath, std::string& cause) {
    using Found = std::pair<FileKind, std::string>;
    const auto found = Ask<Found>(
        nativePath,
        [nativePath, files = &m_files] {
            Found answer(files->Kind(nativePath), "");
            const bool readable =
                answer.first == FileKind::Folder
                    ? files->IsReadableFolder(nativePath, answer.second)
                    : files->IsReadableFile(nativePath, answer.second) &&
                          files->IsReadableFolder(SplitNativePath(nativePath).first, answer.second);
            if (!readable)
                answer.first = FileKind::Missing;
            return answer;
        },
        m_forFolders);
    cause = found ? found->second : "does not answer in time";
    return found ? found->first : FileKind::Missing;
}

bool Lookout::Answers(const std::string& nativePath) {
    return Ask<FileKind>(
               nativePath, [nativePath, files = &m_files] { return files->Kind(nativePath); }, m_forFolders)
        .has_value();
}

} // namespace kirolane
