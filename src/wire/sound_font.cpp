#include "wire/sound_font.h"

#include <array>
#include <filesystem>

namespace kirolane::wire {

std::string FindSoundFont(const std::string& wanted) {
    if (!wanted.empty())
        return wanted;
    namespace fs = std::filesystem;
    constexpr std::array kFolders = {"/usr/share/sounds/sf2", "/usr/share/sounds/sf3",
                                     "/usr/share/soundfonts"};
    constexpr std::array kNames = {"default-GM.sf2", "default-GM.sf3", "TimGM6mb.sf2", "FluidR3_GM.sf2"};
    std::error_code error;
    for (const char* folder : kFolders)
        for (const char* name : kNames)
            if (const fs::path path = fs::path(folder) / name; fs::is_regular_file(path, error))
                return path.native();
    for (const char* folder : kFolders)
        for (const auto& entry : fs::directory_iterator(folder, error))
            if (const auto extension = entry.path().extension();
                (extension == ".sf2" || extension == ".sf3") && entry.is_regular_file(error))
                return entry.path().native();
    return "";
}

} // namespace kirolane::wire
