#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Characters of strings that may hold bytes which are no UTF-8 (see text.h).
namespace kirolane {

struct Character {
    std::int32_t code = 0; ///< code point, or -1 for a byte that is not part of valid UTF-8
    std::size_t bytes = 1;
};

/// The first character of a string that is not empty.
Character FirstCharacter(std::string_view s);

/// Number of leading bytes that are ASCII. Most text here is, and its characters are its bytes.
std::size_t AsciiRun(std::string_view s);

/// Unicode's simple folding of a code point.
std::int32_t Fold(std::int32_t code);

constexpr bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace kirolane
