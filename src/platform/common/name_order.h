#pragma once

#include <string>
#include <string_view>

namespace kirolane {

/// A key whose byte order is the order of CompareNames, but for names that differ only in bytes that the
/// order does not see. Sorting many names by ready-made keys is several times faster than comparing names.
std::string NameOrderKey(std::string_view name);

} // namespace kirolane
