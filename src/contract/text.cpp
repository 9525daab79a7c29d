#include "contract/text.h"

#include "contract/core/characters.h"

#include <algorithm>
#include <charconv>

namespace kirolane {

namespace {

/// Bytes of the first n characters.
std::size_t Prefix(std::string_view s, std::int32_t n) {
    std::size_t at = 0;
    for (auto left = static_cast<std::size_t>(std::max(n, 0)); left > 0 && at < s.size();) {
        const std::string_view rest = s.substr(at);
        const std::size_t run = IsAscii(rest.front()) ? std::min(AsciiRun(rest), left) : 0;
        at += run > 0 ? run : FirstCharacter(rest).bytes;
        left -= std::max<std::size_t>(run, 1);
    }
    return at;
}

} // namespace

std::int32_t Len(std::string_view s) {
    std::size_t count = 0;
    while (!s.empty()) {
        const std::size_t run = IsAscii(s.front()) ? AsciiRun(s) : 0;
        s.remove_prefix(run > 0 ? run : FirstCharacter(s).bytes);
        count += std::max<std::size_t>(run, 1);
    }
    return static_cast<std::int32_t>(count);
}

std::string Left(std::string_view s, std::int32_t n) {
    return std::string(s.substr(0, Prefix(s, n)));
}

std::string Mid(std::string_view s, std::int32_t start) {
    return std::string(s.substr(Prefix(s, std::max(start, 1) - 1)));
}

std::int32_t InStr(std::string_view haystack, std::string_view needle) {
    const auto at = haystack.find(needle);
    return at == std::string_view::npos ? 0 : Len(haystack.substr(0, at)) + 1;
}

std::string Str(std::int32_t value) {
    return std::to_string(value);
}

std::string Str(float value) {
    if (value == 0.0F)
        return "0";   // the negative one too
    char buffer[128]; // the longest plain form of a single has 48 digits
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

double CDbl(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    const auto digits = s.substr(s.starts_with('-') ? 1 : 0);
    if (digits.empty() || !(IsDigit(digits.front()) || digits.front() == '.'))
        return 0.0; // "inf" and "nan" are no numbers here
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
        const Character x = FirstCharacter(a);
        const Character y = FirstCharacter(b);
        const bool same = x.code < 0 || y.code < 0 ? x.code == y.code && a.front() == b.front()
                                                   : Fold(x.code) == Fold(y.code);
        if (!same)
            return false;
        a.remove_prefix(x.bytes);
        b.remove_prefix(y.bytes);
    }
    return a.empty() && b.empty();
}

} // namespace kirolane
