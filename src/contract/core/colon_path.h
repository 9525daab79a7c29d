#pragma once

#include <string>
#include <string_view>
#include <utility>

/// The two forms of a path. Colon form: "Root" for the volume of "/", names joined by ":", a folder's path
/// ending in ":". ":" within a name and "/" change places, as neither form can hold its own separator.
namespace kirolane {

/// A name between the two forms; its own inverse.
std::string SwapSeparators(std::string_view name);

/// The folder and the name of what lies at an absolute native path without a "/" at its end.
std::pair<std::string, std::string> SplitNativePath(const std::string& nativePath);

/// True for "." and "..", which the system takes for other things than names, and for a name with a NUL, at
/// which it would stop reading.
bool IsNoName(std::string_view name);

/// "/a/b" to "Root:a:b", with a ":" at the end for a folder; "/" is "Root:".
std::string ToColonPath(std::string_view nativePath, bool folder);

/// "Root:a:b" or "Root:a:b:" to "/a/b". A path that does not begin with the volume is relative to `base`, a
/// native path; empty elements are skipped. "" if an element is no name: such a path
/// leads nowhere.
std::string ToNativePath(std::string_view colonPath, std::string_view base);

} // namespace kirolane
