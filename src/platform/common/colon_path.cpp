#include "platform/common/colon_path.h"

#include <algorithm>

namespace kirolane {

namespace {
constexpr std::string_view kVolume = "Root";

/// Appends the swapped form of a name or, with its separators, of a path.
void AppendSwapped(std::string& to, std::string_view name) {
    const std::size_t from = to.size();
    to += name;
    if (name.find('/') == std::string_view::npos && name.find(':') == std::string_view::npos)
        return;
    for (std::size_t i = from; i < to.size(); ++i)
        to[i] = to[i] == ':' ? '/' : to[i] == '/' ? ':' : to[i];
}
} // namespace

std::string SwapSeparators(std::string_view name) {
    std::string swapped;
    AppendSwapped(swapped, name);
    return swapped;
}

bool IsNoName(std::string_view name) {
    return name == "." || name == ".." || name.find('\0') != std::string_view::npos;
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
        path = base == "/" ? "" : base;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        const std::string_view name = rest.substr(0, end);
        if (IsNoName(name))
            return {};
        if (!name.empty()) {
            path += '/';
            AppendSwapped(path, name);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path.empty() ? "/" : path;
}

} // namespace kirolane
