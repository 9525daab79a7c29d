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

/// Any first character; see FirstCharacter.
Character DecodeFirst(std::string_view s);

/// The first character of a string that is not empty. Kana, kanji and full-width forms are decoded here: all
/// that begin with bytes after which any two continuation bytes may stand.
inline Character FirstCharacter(std::string_view s) {
    const auto byte = [s](std::size_t i) {
        return static_cast<std::int32_t>(static_cast<unsigned char>(s[i]));
    };
    const auto continues = [&](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const std::int32_t lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};
    const bool plain = (lead >= 0xE1 && lead <= 0xEC) || lead == 0xEE || lead == 0xEF;
    if (plain && s.size() >= 3 && continues(1) && continues(2))
        return {(lead & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F), 3};
    return DecodeFirst(s);
}

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
