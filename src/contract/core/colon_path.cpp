#include "contract/core/colon_path.h"

#include <algorithm>

namespace kirolane {

namespace {
constexpr std::string_view kVolume = "Root";

/// Swaps from there to the end of the text.
void SwapFrom(std::string& text, std::size_t at) {
    const auto rest = std::string_view(text).substr(at);
    if (rest.find(':') == std::string_view::npos && rest.find('/') == std::string_view::npos)
        return; // as nearly every name
    for (; at < text.size(); ++at) {
        char& c = text[at];
        if (c == ':' || c == '/')
            c = c == ':' ? '/' : ':';
    }
}
} // namespace

std::string SwapSeparators(std::string_view name) {
    std::string swapped(name);
    SwapFrom(swapped, 0);
    return swapped;
}

std::pair<std::string, std::string> SplitNativePath(const std::string& nativePath) {
    const auto slash = nativePath.rfind('/');
    if (slash == std::string::npos)
        return {"/", nativePath};
    return {slash == 0 ? "/" : nativePath.substr(0, slash), nativePath.substr(slash + 1)};
}

bool IsNoName(std::string_view name) {
    return name == "." || name == ".." || name.find('\0') != std::string_view::npos;
}

std::string ToColonPath(std::string_view nativePath, bool folder) {
    std::string path(kVolume);
    path += nativePath;
    SwapFrom(path, kVolume.size());
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
            path += SwapSeparators(name);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return path.empty() ? "/" : path;
}

} // namespace kirolane
