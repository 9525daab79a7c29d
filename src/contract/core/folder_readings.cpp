#include "contract/core/folder_readings.h"

#include "contract/core/folder_snapshot.h"

namespace kirolane {

std::shared_ptr<const FolderSnapshot> FolderReadings::Find(std::string_view colonPath) const {
    for (auto it = m_scopes.rbegin(); it != m_scopes.rend(); ++it)
        if (const auto scope = it->lock(); scope != nullptr && scope->Snapshot()->ColonPath() == colonPath)
            return scope->Snapshot();
    return nullptr;
}

void FolderReadings::Register(const std::shared_ptr<const FolderScope>& scope) {
    std::erase_if(m_scopes, [](const auto& weak) { return weak.expired(); });
    m_scopes.push_back(scope);
}

} // namespace kirolane
