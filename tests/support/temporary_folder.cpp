#include "support/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <stdlib.h>

namespace kirolane::tests {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::canonical(fs::temp_directory_path()) / "kirolane-XXXXXX").native();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder: " + name);
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view content) const {
    std::string path = Path(name);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
    return path;
}

std::string TemporaryFolder::MakeFolder(std::string_view name) const {
    std::string path = Path(name);
    fs::create_directories(path);
    return path;
}

std::string TemporaryFolder::Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kirolane::tests
