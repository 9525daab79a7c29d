#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The order of CompareNames for many names at once, which is many times faster than comparing pairs.
namespace kirolane {

/// Appends a key whose byte order is the order of CompareNames, but for names that differ only in bytes that
/// the order does not see.
void AppendNameOrderKey(std::string& to, std::string_view name);

enum class SortDirection : std::uint8_t { Ascending, Descending };

/// The indices of the names in their order; identical names stay as they stand.
std::vector<std::uint32_t> OrderOfNames(const std::vector<std::string_view>& names,
                                        SortDirection direction = SortDirection::Ascending);

} // namespace kirolane
