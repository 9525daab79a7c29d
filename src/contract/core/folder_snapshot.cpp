#include "contract/core/folder_snapshot.h"

#include "contract/core/colon_path.h"
#include "contract/core/name_order.h"
#include "contract/text.h"

#include <algorithm>

namespace kirolane {

FolderSnapshot FolderSnapshot::Read(const FileSystem& files, std::string nativePath, std::string& cause) {
    FolderSnapshot snapshot;
    std::vector<Entry> found;
    const auto take = [&](std::string_view name, bool isFolder) {
        if (name.starts_with("._"))
            return;
        found.push_back({snapshot.m_names.size(), static_cast<std::uint32_t>(name.size()), isFolder});
        snapshot.m_names += name;
    };
    snapshot.m_wasRead = files.ReadFolder(nativePath, take, cause);
    if (!snapshot.m_wasRead)
        found.clear();

    std::vector<std::string_view> names;
    names.reserve(found.size());
    for (const Entry& entry : found)
        names.push_back(snapshot.Name(entry));
    snapshot.m_entries.reserve(found.size());
    for (const std::uint32_t index : OrderOfNames(names))
        snapshot.m_entries.push_back(found[index]);

    snapshot.m_colonPath = ToColonPath(nativePath, true);
    snapshot.m_nativePath = std::move(nativePath);
    return snapshot;
}

std::size_t FolderSnapshot::Find(std::string_view name) const {
    const std::size_t next = m_lastFound + 1; // wraps from kNone to 0
    for (const std::size_t guess : {next, m_lastFound})
        if (guess < Count() && Name(guess) == name)
            return m_lastFound = guess;
    const auto it = std::lower_bound(m_entries.begin(), m_entries.end(), name,
                                     [this](const Entry& entry, std::string_view sought) {
                                         return CompareNames(Name(entry), sought) < 0;
                                     });
    if (it == m_entries.end() || Name(*it) != name)
        return kNone;
    return m_lastFound = static_cast<std::size_t>(it - m_entries.begin());
}

} // namespace kirolane
