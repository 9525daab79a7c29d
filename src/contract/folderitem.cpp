#include "contract/folderitem.h"

#include "contract/core/colon_path.h"
#include "contract/core/folder_snapshot.h"
#include "contract/core/runtime.h"

namespace kirolane {

namespace {

std::string Join(const std::string& folder, std::string_view name) {
    std::string path = folder == "/" ? "" : folder;
    path += '/';
    path += name;
    return path;
}

} // namespace

std::string ResolveFolderPath(const std::string& path, const std::string& applicationFolder,
                              const std::function<bool(const std::string&)>& isFolder, std::string& cause) {
    if (path.empty())
        return applicationFolder;
    std::string native = ToNativePath(path, applicationFolder);
    if (!native.empty() && isFolder(path.back() == ':' ? native : SplitNativePath(native).first))
        return native;
    cause = "no such folder";
    return {};
}

FolderItem::FolderItem(std::string nativePath)
    : m_nativePath(std::move(nativePath)), m_index(FolderSnapshot::kNone) {}

FolderItem::FolderItem(std::shared_ptr<const FolderSnapshot> snapshot, std::size_t index)
    : m_snapshot(std::move(snapshot)), m_index(index) {}

FolderItem::FolderItem(std::shared_ptr<const FolderSnapshot> snapshot)
    : m_index(FolderSnapshot::kNone), m_contents(std::move(snapshot)) {}

std::string FolderItem::NativePath() const {
    if (m_snapshot != nullptr)
        return Join(m_snapshot->NativePath(), m_snapshot->Name(m_index));
    return m_nativePath.empty() ? m_contents->NativePath() : m_nativePath;
}

std::string FolderItem::AbsolutePath() const {
    return ToColonPath(NativePath(), Directory());
}

std::string FolderItem::Name() const {
    if (m_snapshot != nullptr)
        return SwapSeparators(m_snapshot->Name(m_index));
    const std::string path = NativePath();
    return SwapSeparators(std::string_view(path).substr(path.rfind('/') + 1));
}

bool FolderItem::Directory() const {
    if (m_snapshot != nullptr)
        return m_snapshot->IsFolder(m_index);
    if (m_contents != nullptr && m_contents->WasRead())
        return true;
    return Runtime::Current().Looks().IsFolder(NativePath());
}

const FolderSnapshot& FolderItem::Contents() const {
    if (m_contents == nullptr) {
        std::string cause;
        auto snapshot = FolderSnapshot::Read(Runtime::Current().Files(), NativePath(), cause);
        if (!cause.empty())
            Runtime::Current().Failures().NoteFile(NativePath(), cause);
        m_contents = std::make_shared<const FolderSnapshot>(std::move(snapshot));
    }
    return *m_contents;
}

std::int32_t FolderItem::Count() const {
    return static_cast<std::int32_t>(Contents().Count());
}

Ref<FolderItem> FolderItem::Item(std::int32_t index) const {
    if (index < 1 || index > Count())
        return nullptr;
    return Ref(std::make_shared<FolderItem>(m_contents, static_cast<std::size_t>(index) - 1));
}

Ref<FolderItem> FolderItem::Child(std::string_view name) const {
    if (m_snapshot != nullptr && !m_snapshot->IsFolder(m_index))
        return nullptr;
    const std::string native = SwapSeparators(name);
    if (m_contents != nullptr) {
        const std::size_t index = m_contents->Find(native);
        if (index != FolderSnapshot::kNone)
            return Ref(std::make_shared<FolderItem>(m_contents, index));
    }
    return Ref(std::make_shared<FolderItem>(Join(NativePath(), native)));
}

void FolderItem::CreateAsFolder() const {
    auto& runtime = Runtime::Current();
    std::string cause;
    if (!runtime.Files().MakeFolder(NativePath(), cause))
        runtime.Failures().NoteFile(NativePath(), cause);
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() const {
    auto& runtime = Runtime::Current();
    std::string content;
    std::string cause;
    if (runtime.Files().ReadText(NativePath(), content, cause))
        return Ref(std::make_shared<TextInputStream>(std::move(content)));
    runtime.Failures().NoteFile(NativePath(), cause);
    return nullptr;
}

Ref<TextOutputStream> FolderItem::CreateTextFile() const {
    auto& runtime = Runtime::Current();
    std::string cause;
    if (auto sink = runtime.Files().OpenForWriting(NativePath(), cause))
        return Ref(std::make_shared<TextOutputStream>(std::move(sink)));
    runtime.Failures().NoteFile(NativePath(), cause);
    return nullptr;
}

Ref<Movie> FolderItem::OpenAsMovie() const {
    auto& runtime = Runtime::Current();
    std::string cause;
    std::string path = NativePath();
    if (runtime.Looks().IsReadableFile(path, cause))
        return Ref(std::make_shared<Movie>(std::move(path)));
    runtime.Failures().SayOnce(path + ": " + cause);
    return nullptr;
}

Ref<FolderItem> GetFolderItem(std::string_view path) {
    auto& runtime = Runtime::Current();
    if (auto snapshot = runtime.Readings().Find(path))
        return Ref(std::make_shared<FolderItem>(std::move(snapshot)));
    std::string cause;
    const auto isFolder = [&](const std::string& native) { return runtime.Looks().IsFolder(native); };
    std::string native =
        ResolveFolderPath(std::string(path), runtime.Files().ApplicationFolder(), isFolder, cause);
    if (native.empty()) {
        runtime.Failures().NoteFile(std::string(path), cause);
        return nullptr;
    }
    return Ref(std::make_shared<FolderItem>(std::move(native)));
}

Ref<FolderItem> DesktopFolder() {
    return Ref(std::make_shared<FolderItem>(Runtime::Current().Files().DesktopFolder()));
}

Ref<FolderItem> SelectFolder() {
    std::string native = Runtime::Current().ChooseFolder();
    return native.empty() ? Ref<FolderItem>() : Ref(std::make_shared<FolderItem>(std::move(native)));
}

} // namespace kirolane
