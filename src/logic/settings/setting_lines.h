#pragma once

#include <cstdint>
#include <string_view>

/// The settings file: 200 lines, a line's meaning is its number.
namespace kirolane {

enum class LineKind : std::uint8_t {
    Marker, ///< for a human reader; never read back
    Value,
    Folder, ///< a folder's path, at first the application's own
    Slot,   ///< in the file a literal, in memory the path picked by a `?` button
    Filler,
};

/// Lines `first` to `last` of one kind. A file keeps the markers of the first start until a save puts its
/// own; both are valid for ever.
struct SettingLines {
    std::int32_t first;
    std::int32_t last;
    LineKind kind;
    std::string_view initial; ///< at the first start; of a folder line unused
    std::string_view saved;   ///< by the preferences; of a value or folder line unused
};

// clang-format off
inline constexpr SettingLines kSettingLines[] = {
    {  1,   1, LineKind::Marker, "// DualDisplayMode", "// DisplayMode"},
    {  2,   2, LineKind::Value,  "true",               ""},
    {  3,   3, LineKind::Marker, "FullScreen",         "// FullScreen"}, // sic
    {  4,   4, LineKind::Value,  "false",              ""},
    {  5,   5, LineKind::Marker, "// WindowColor",     "// WindowColor"},
    {  6,   6, LineKind::Value,  "false",              ""},
    {  7,   7, LineKind::Marker, "// Window Hide",     "// Window Hide"},
    {  8,   8, LineKind::Value,  "false",              ""},
    {  9,  10, LineKind::Filler, "nil",                "nil"},
    { 11,  11, LineKind::Marker, "// FreeSeek",        "// FreeSeek"},
    { 12,  12, LineKind::Value,  "3",                  ""},
    { 13,  13, LineKind::Marker, "// - Sound",         "// -Sound"}, // sic
    { 14,  14, LineKind::Value,  "3",                  ""},
    { 15,  15, LineKind::Marker, "// FolderNumber",    "// FolderNumber"},
    { 16,  16, LineKind::Value,  "1",                  ""},
    { 17,  17, LineKind::Marker, "// - Sound",         "// - Sound"},
    { 18,  18, LineKind::Value,  "1",                  ""},
    { 19,  20, LineKind::Filler, "nil",                "nil"},
    { 21,  21, LineKind::Marker, "// Folder - URL",    "// Path"},
    { 22,  31, LineKind::Folder, "",                   ""},
    { 32,  32, LineKind::Marker, "***** Music *****",  "***** Music *****"},
    { 33,  42, LineKind::Folder, "",                   ""},
    { 43,  43, LineKind::Slot,   "Sfolder",            "Sfolder"},
    { 44,  44, LineKind::Slot,   "mSfolder",           "mSfolder"},
    { 45, 200, LineKind::Filler, "nil",                "nil"},
};
// clang-format on

/// The numbers of the lines that the program reads.
namespace line {
inline constexpr std::int32_t kDualDisplay = 2;        ///< "true" or "false", as the next three
inline constexpr std::int32_t kFullScreen = 4;         ///< of the monitor, on a single display
inline constexpr std::int32_t kWindowColor = 6;        ///< flat console
inline constexpr std::int32_t kHide = 8;               ///< monitor hidden at start
inline constexpr std::int32_t kFreeSeek = 12;          ///< row of kFreeSteps, "1" to "19"
inline constexpr std::int32_t kSoundFreeSeek = 14;     ///< the same
inline constexpr std::int32_t kFolderNumber = 16;      ///< folder button in force at start, "1" to "10"
inline constexpr std::int32_t kSoundFolderNumber = 18; ///< the same
inline constexpr std::int32_t kFirstFolder = 22;
inline constexpr std::int32_t kLastFolder = 31;
inline constexpr std::int32_t kFirstSoundFolder = 33;
inline constexpr std::int32_t kLastSoundFolder = 42;
inline constexpr std::int32_t kChosenFolder = 43;
inline constexpr std::int32_t kChosenSoundFolder = 44;
inline constexpr std::int32_t kLast = 200;
} // namespace line

inline constexpr std::int32_t kFolders = 10;      ///< folder buttons of a list, numbered from 1
inline constexpr std::int32_t kChosenNumber = 99; ///< number of the `?` button

/// The line that holds the folder of a movie folder button, 0 for a number that is none.
constexpr std::int32_t FolderLine(std::int32_t number) {
    if (number == kChosenNumber)
        return line::kChosenFolder;
    return number >= 1 && number <= kFolders ? line::kFirstFolder + number - 1 : 0;
}

/// The same for a sound folder button.
constexpr std::int32_t SoundFolderLine(std::int32_t number) {
    if (number == kChosenNumber)
        return line::kChosenSoundFolder;
    return number >= 1 && number <= kFolders ? line::kFirstSoundFolder + number - 1 : 0;
}

constexpr bool SettingLinesAreWhole() {
    std::int32_t next = 1;
    for (const SettingLines& lines : kSettingLines) {
        if (lines.first != next || lines.last < lines.first)
            return false;
        next = lines.last + 1;
    }
    return next == line::kLast + 1;
}
static_assert(SettingLinesAreWhole());

} // namespace kirolane
