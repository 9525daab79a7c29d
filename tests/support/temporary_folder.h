#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include <stdlib.h>

namespace kirolane::tests {

/// The bytes of a file, "" for one that is not there.
inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A new empty folder, removed with all it holds at the end. Names are relative to it and bytes.
class TemporaryFolder {
public:
    TemporaryFolder() {
        if (::mkdtemp(m_path.data()) == nullptr)
            throw std::runtime_error("no temporary folder: " + m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Absolute, symbolic links resolved.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] std::string Path(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// Makes or replaces the file; its path. The folder it stands in must be there.
    std::string Write(std::string_view name, std::string_view content) const {
        std::ofstream file;
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.open(Path(name), std::ios::binary);
        file << content << std::flush;
        return Path(name);
    }
    /// Makes the folder, and those it stands in; its path.
    std::string MakeFolder(std::string_view name) const {
        std::filesystem::create_directories(Path(name));
        return Path(name);
    }
    [[nodiscard]] std::string Read(std::string_view name) const { return ReadFile(Path(name)); }

private:
    std::string m_path =
        std::filesystem::canonical(std::filesystem::temp_directory_path()).native() + "/kirolane-XXXXXX";
};

} // namespace kirolane::tests
