#pragma once

#include "contract/backend/filesystem.h"

namespace kirolane::posix {

/// The files back end on POSIX. Names are bytes throughout.
class PosixFileSystem : public FileSystem {
public:
    /// Both absolute, without a trailing "/".
    PosixFileSystem(std::string homeFolder, std::string applicationFolder)
        : m_home(std::move(homeFolder)), m_application(std::move(applicationFolder)) {}

    /// Makes "Library/Application Support" in the home folder, where the settings go, if it is not there. ""
    /// or the failure, file and cause. To be called before the logic runs, which cannot start without.
    [[nodiscard]] std::string Prepare();

    [[nodiscard]] std::string ApplicationFolder() const override { return m_application; }
    [[nodiscard]] std::string DesktopFolder() const override { return InHome("Desktop"); }
    [[nodiscard]] FileKind Kind(const std::string& path) const override;
    bool ReadFolder(const std::string& path, const FolderVisitor& visit, std::string& cause) const override;
    bool MakeFolder(const std::string& path, std::string& cause) override;
    bool ReadText(const std::string& path, std::string& content, std::string& cause) const override;
    std::unique_ptr<TextSink> OpenForWriting(const std::string& path, std::string& cause) override;
    [[nodiscard]] bool IsReadableFile(const std::string& path, std::string& cause) const override;
    [[nodiscard]] bool IsReadableFolder(const std::string& path, std::string& cause) const override;

private:
    [[nodiscard]] std::string InHome(const std::string& name) const;

    std::string m_home;
    std::string m_application;
};

} // namespace kirolane::posix
