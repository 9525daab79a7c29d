#pragma once

#include <string>
#include <vector>

namespace kirolane::bench {

/// A folder of the measurement's own in memory (tmpfs), gone with the object.
class MemoryFolder {
public:
    MemoryFolder();
    ~MemoryFolder();
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// Makes `name` with that many empty files in it, half of them named as movies; its path.
    [[nodiscard]] std::string MakeFiles(const std::string& name, int count) const;
    /// Makes `name` with that many files named as movies; the first by name is a copy of `clip`, the others
    /// are empty.
    [[nodiscard]] std::string MakeMovies(const std::string& name, int count, const std::string& clip) const;

private:
    std::string m_path;
};

/// The path of a folder as the settings hold it.
std::string ColonPath(std::string nativePath);

/// The reference of a scan: reads the folder, asks each entry's kind by stat and appends the names.
std::vector<std::string> BareReading(const std::string& folder);

} // namespace kirolane::bench
