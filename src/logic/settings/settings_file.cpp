#include "contract/textinputstream.h"
#include "contract/textoutputstream.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

namespace kirolane {

namespace {
// Behind VolumeName.
constexpr const char* kProductFolder = "Library:Application Support:Kirolane";
constexpr const char* kSettingsFolder = "Library:Application Support:Kirolane:Setting";
constexpr const char* kSettingsFile = "Library:Application Support:Kirolane:Setting:ES";
} // namespace

/// Nil where a folder on the way is missing.
Ref<FolderItem> Mainform::SettingsItem() const {
    return GetFolderItem(VolumeName + kSettingsFile);
}

void Mainform::DefaultSettingLoad_Func() {
    const std::string ownFolder = GetFolderItem("")->AbsolutePath();
    for (const SettingLines& lines : kSettingLines)
        for (std::int32_t n = lines.first; n <= lines.last; ++n)
            Setting_Data.Set(n, lines.kind == LineKind::Folder ? ownFolder : std::string(lines.initial));
}

/// The test is on the item alone, which is nil only if a folder on the path is missing. A file missing in a
/// folder that is there fails the start: the settings of somebody are gone, and nothing may replace them
/// silently.
void Mainform::LoadSettings() {
    const auto settings = SettingsItem();
    if (!settings.IsNil()) {
        const auto stream = settings->OpenAsTextFile();
        Setting_Data.Set(1, stream->ReadLine());
        if (Setting_Data(1).empty()) {
            DefaultSettingLoad_Func(); // the empty file stays as it is
        } else {
            for (std::int32_t n = 2; n <= line::kLast; ++n) {
                Setting_Data.Set(n, stream->ReadLine());
                YieldToThreads();
            }
        }
        stream->Close();
        return;
    }
    GetFolderItem(VolumeName + kProductFolder)->CreateAsFolder();
    GetFolderItem(VolumeName + kSettingsFolder)->CreateAsFolder();
    DefaultSettingLoad_Func();
    WriteSettings();
}

void Mainform::WriteSettings() {
    const auto stream = SettingsItem()->CreateTextFile();
    for (std::int32_t n = 1; n <= line::kLast; ++n) {
        stream->WriteLine(Setting_Data(n));
        YieldToThreads();
    }
    stream->Close();
}

} // namespace kirolane
