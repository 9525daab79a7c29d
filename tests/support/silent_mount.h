#pragma once

#include "backends/posix/posix_filesystem.h"

#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>

namespace kirolane::tests {

/// Files of which some lie on a mount that answers only when told.
class SilentMount : public posix::PosixFileSystem {
public:
    using PosixFileSystem::PosixFileSystem;
    ~SilentMount() override {
        Answer();
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_waiting == 0; });
    }
    /// What becomes silent: readings of folders, and questions about paths with `part` in them.
    void SilentFolders() { m_folders = true; }
    void SilentBelow(std::string part) { m_part = std::move(part); }
    FileKind Kind(const std::string& path) const override {
        if (m_part.empty() || path.find(m_part) == std::string::npos)
            return PosixFileSystem::Kind(path);
        Wait();
        return FileKind::Missing;
    }
    bool ReadFolder(const std::string& path, const FolderVisitor& visit, std::string& cause) const override {
        if (m_folders)
            Wait();
        return PosixFileSystem::ReadFolder(path, visit, cause);
    }
    /// Waits until so many questions have come.
    bool WaitForQuestions(int count) const {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(10), [&] { return m_asked >= count; });
    }
    /// The first so many questions that came, or all there will be.
    void Answer(int questions = std::numeric_limits<int>::max()) {
        const std::lock_guard lock(m_mutex);
        m_answered = questions;
        m_changed.notify_all();
    }

private:
    void Wait() const {
        std::unique_lock lock(m_mutex);
        const int question = ++m_asked;
        ++m_waiting;
        m_changed.notify_all();
        m_changed.wait(lock, [&] { return question <= m_answered; });
        --m_waiting;
        m_changed.notify_all();
    }

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    mutable int m_asked = 0;
    mutable int m_waiting = 0;
    int m_answered = 0;
    bool m_folders = false;
    std::string m_part;
};

} // namespace kirolane::tests
