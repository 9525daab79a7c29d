#include "platform/common/colon_path.h"

#include <algorithm>

namespace kirolane {

namespace {
constexpr std::string_view kVolume = "Root";

/// Appends the swapped form of a name.
void AppendSwapped(std::string& to, std::string_view name) {
    for (const char c : name)
        to += c == ':' ? '/' : c == '/' ? ':' : c;
}
} // namespace

std::string SwapSeparators(std::string_view name) {
    std::string swapped;
    swapped.reserve(name.size());
    AppendSwapped(swapped, name);
    return swapped;
}

std::string ToColonPath(std::string_view nativePath, bool folder) {
    std::string path(kVolume);
    AppendSwapped(path, nativePath);
    if (folder && path.back() != ':')
        path += ':';
    return path;
}

std::string ToNativePath(std::string_view colonPath, std::string_view base) {
    std::string path;
    std::string_view rest = colonPath;
    if (rest == kVolume || rest.substr(0, kVolume.size() + 1) == "Root:")
        rest.remove_prefix(kVolume.size());
    else
        path = base;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            path += '/';
            AppendSwapped(path, rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path.empty() ? "/" : path;
}

} // namespace kirolane
