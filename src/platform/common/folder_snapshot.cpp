#include "platform/common/folder_snapshot.h"

#include "platform/common/colon_path.h"
#include "platform/common/name_order.h"

#include <algorithm>
#include <numeric>

namespace kirolane {

FolderSnapshot FolderSnapshot::Read(const FileSystem& files, std::string nativePath, std::string& cause) {
    FolderSnapshot snapshot;
    auto entries = files.ReadFolder(nativePath, cause);
    std::erase_if(entries, [](const FolderEntry& entry) { return entry.name.starts_with("._"); });

    struct Keyed {
        std::string key;
        FolderEntry entry;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(entries.size());
    for (auto& entry : entries)
        keyed.push_back({NameOrderKey(entry.name), std::move(entry)});
    std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
        const int order = a.key.compare(b.key);
        return order != 0 ? order < 0 : a.entry.name < b.entry.name;
    });
    for (std::size_t i = 0; i < keyed.size(); ++i)
        entries[i] = std::move(keyed[i].entry);

    snapshot.m_colonPath = ToColonPath(nativePath, true);
    snapshot.m_nativePath = std::move(nativePath);
    snapshot.m_entries = std::move(entries);
    return snapshot;
}

std::size_t FolderSnapshot::Find(std::string_view name) const {
    const std::size_t next = m_lastFound + 1; // wraps from kNone to 0
    for (const std::size_t guess : {next, m_lastFound})
        if (guess < m_entries.size() && m_entries[guess].name == name)
            return m_lastFound = guess;
    const auto it = std::find_if(m_entries.begin(), m_entries.end(),
                                 [&](const FolderEntry& entry) { return entry.name == name; });
    return it == m_entries.end() ? kNone : m_lastFound = static_cast<std::size_t>(it - m_entries.begin());
}

} // namespace kirolane
