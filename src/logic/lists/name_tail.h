#pragma once

#include "contract/text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The kind of a file is told by the last characters of its name, not by what follows its last point.
namespace kirolane {

/// Which tail of a name an extension is held against: the last 4, 5 or 3 characters.
enum class Tail : std::uint8_t { A = 4, B = 5, C = 3 };

/// The last `characters` characters of a name; the whole of a shorter one.
inline std::string NameTail(std::string_view name, std::int32_t characters) {
    return Mid(name, Len(name) - (characters - 1));
}

/// The first row of a table whose extension equals the tail of its own length, without case; null if none
/// does.
template <class Row, std::size_t N>
const Row* FindByTail(const Row (&rows)[N], std::string_view a, std::string_view b, std::string_view c) {
    for (const Row& row : rows)
        if (Equals(row.tail == Tail::A ? a : row.tail == Tail::B ? b : c, row.extension))
            return &row;
    return nullptr;
}

/// True if no row of a table holds its extension against a tail of another length.
template <class Rows> constexpr bool TailsFit(const Rows& rows) {
    for (const auto& row : rows)
        if (row.extension.size() != static_cast<std::size_t>(row.tail))
            return false;
    return true;
}

} // namespace kirolane
