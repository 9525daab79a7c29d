#pragma once

#include "backends/posix/posix_filesystem.h"
#include "support/gate.h"

namespace kirolane::tests {

/// Files of which some lie on a mount that answers only while its gate is open: the readings of a folder come
/// by as its path and "/*", questions about a file or folder as its path.
class SilentMount : public posix::PosixFileSystem {
public:
    using PosixFileSystem::PosixFileSystem;

    Gate& Answers() { return m_answers; }
    int crowd = 0; ///< files "1.asf", "2.asf" and so on that every folder has besides its own

    FileKind Kind(const std::string& path) const override {
        m_answers.Pass(path);
        return PosixFileSystem::Kind(path);
    }
    bool ReadFolder(const std::string& path, const FolderVisitor& visit, std::string& cause) const override {
        m_answers.Pass(path + "/*");
        for (int n = 1; n <= crowd; ++n)
            visit(std::to_string(n) + ".asf", false);
        return PosixFileSystem::ReadFolder(path, visit, cause);
    }

private:
    mutable Gate m_answers;
};

} // namespace kirolane::tests
