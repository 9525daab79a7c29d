#pragma once

#include <string>
#include <string_view>

namespace kirolane::tests {

/// A new empty folder, removed with all it holds at the end. Names are relative to it and bytes.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Absolute, symbolic links resolved.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] std::string Path(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// Makes or replaces the file; its path. The folder it stands in must be there.
    std::string Write(std::string_view name, std::string_view content) const;
    /// Makes the folder, and those it stands in; its path.
    std::string MakeFolder(std::string_view name) const;
    /// "" for a file that is not there.
    [[nodiscard]] std::string Read(std::string_view name) const;

private:
    std::string m_path;
};

} // namespace kirolane::tests
