#include "platform/text.h"

#include "platform/common/name_order.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include <utf8proc.h>

namespace kirolane {

namespace {

constexpr bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

struct Character {
    std::int32_t code = 0; ///< code point, or -1 for a byte that is no UTF-8
    std::size_t bytes = 1;
};

Character Next(std::string_view s) {
    if (IsAscii(s.front()))
        return {static_cast<unsigned char>(s.front()), 1};
    utf8proc_int32_t code = -1;
    const auto used = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(s.data()),
                                       static_cast<utf8proc_ssize_t>(s.size()), &code);
    return used > 0 ? Character{code, static_cast<std::size_t>(used)} : Character{-1, 1};
}

/// Simple folding: upper case first, so that letters with several small forms meet; the dotted and the
/// dotless i of Turkish fold to themselves.
std::int32_t Fold(std::int32_t code) {
    constexpr std::int32_t kDottedI = 0x130;
    constexpr std::int32_t kDotlessI = 0x131;
    if (code == kDottedI || code == kDotlessI)
        return code;
    return utf8proc_tolower(utf8proc_toupper(code));
}

/// Bytes of the first n characters.
std::size_t Prefix(std::string_view s, std::int32_t n) {
    std::size_t at = 0;
    for (; n > 0 && at < s.size(); --n)
        at += Next(s.substr(at)).bytes;
    return at;
}

} // namespace

std::int32_t Len(std::string_view s) {
    std::int32_t count = 0;
    for (; !s.empty(); ++count)
        s.remove_prefix(Next(s).bytes);
    return count;
}

std::string Left(std::string_view s, std::int32_t n) {
    return std::string(s.substr(0, Prefix(s, n)));
}

std::string Mid(std::string_view s, std::int32_t start) {
    return std::string(s.substr(Prefix(s, start - 1)));
}

std::int32_t InStr(std::string_view haystack, std::string_view needle) {
    const auto at = haystack.find(needle);
    return at == std::string_view::npos ? 0 : Len(haystack.substr(0, at)) + 1;
}

std::string Str(std::int32_t value) {
    return std::to_string(value);
}

std::string Str(float value) {
    char buffer[128]; // the longest plain form of a single has 48 digits
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

double CDbl(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    double value = 0.0;
    std::from_chars(s.data(), s.data() + s.size(), value, std::chars_format::fixed);
    return value;
}

bool Equals(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsAscii(a.front()) && IsAscii(b.front())) {
            if (AsciiLower(a.front()) != AsciiLower(b.front()))
                return false;
            a.remove_prefix(1);
            b.remove_prefix(1);
            continue;
        }
        const Character x = Next(a);
        const Character y = Next(b);
        const bool same = x.code < 0 || y.code < 0 ? x.code == y.code && a.front() == b.front()
                                                   : Fold(x.code) == Fold(y.code);
        if (!same)
            return false;
        a.remove_prefix(x.bytes);
        b.remove_prefix(y.bytes);
    }
    return a.empty() && b.empty();
}

std::string NameOrderKey(std::string_view name) {
    std::string key;
    key.reserve(name.size() + 4);
    while (!name.empty()) {
        if (IsDigit(name.front())) {
            const auto end = std::min(name.find_first_not_of("0123456789"), name.size());
            const auto significant = std::min(name.find_first_not_of('0'), end);
            // A digit first, so that numbers stand among letters where digits do; then the count of digits,
            // so that the longer number is the larger.
            key += '0';
            const std::size_t digits = end - significant;
            key += static_cast<char>(digits / 255);
            key += static_cast<char>(digits % 255);
            key.append(name.substr(significant, digits));
            name.remove_prefix(end);
            continue;
        }
        if (IsAscii(name.front())) {
            key += AsciiLower(name.front());
            name.remove_prefix(1);
            continue;
        }
        const Character c = Next(name);
        if (c.code < 0) {
            key += name.front();
        } else {
            utf8proc_uint8_t bytes[4];
            const auto used = utf8proc_encode_char(Fold(c.code), bytes);
            key.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(used));
        }
        name.remove_prefix(c.bytes);
    }
    return key;
}

int CompareNames(std::string_view a, std::string_view b) {
    const int order = NameOrderKey(a).compare(NameOrderKey(b));
    return order != 0 ? order : a.compare(b);
}

std::string ToDisplay(std::string_view s) {
    std::string shown;
    shown.reserve(s.size());
    while (!s.empty()) {
        const Character c = Next(s);
        if (c.code < 0)
            shown += "\xEF\xBF\xBD"; // U+FFFD
        else
            shown.append(s.substr(0, c.bytes));
        s.remove_prefix(c.bytes);
    }
    return shown;
}

} // namespace kirolane
