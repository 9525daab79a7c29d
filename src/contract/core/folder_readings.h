#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace kirolane {

class FolderScope;
class FolderSnapshot;

/// The readings of folders that are alive (see FolderReading): whoever asks for such a folder is answered
/// from there.
class FolderReadings {
public:
    /// The newest of that folder, null if there is none.
    [[nodiscard]] std::shared_ptr<const FolderSnapshot> Find(std::string_view colonPath) const;
    void Register(const std::shared_ptr<const FolderScope>& scope);

private:
    std::vector<std::weak_ptr<const FolderScope>> m_scopes; ///< newest last
};

} // namespace kirolane
