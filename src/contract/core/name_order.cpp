#include "contract/core/name_order.h"

#include "contract/core/characters.h"
#include "contract/text.h"

#include <algorithm>
#include <array>

#include <utf8proc.h>

namespace kirolane {

namespace {

/// The ASCII digit of an ASCII or full-width one, 0 for any other character.
char DigitOf(const Character& c) {
    constexpr std::int32_t kFullWidthZero = 0xFF10;
    const std::int32_t base = c.code >= kFullWidthZero ? kFullWidthZero : '0';
    return c.code >= base && c.code <= base + 9 ? static_cast<char>('0' + (c.code - base)) : '\0';
}

/// Appends a run of digits as a number; the rest of the name.
std::string_view AppendNumber(std::string& to, std::string_view name) {
    // A digit first, so that numbers stand among letters where digits do; then the count of digits, so that
    // the longer number is the larger.
    to += '0';
    const std::size_t count = to.size();
    to.append(2, '\0');
    while (!name.empty()) {
        const Character c = FirstCharacter(name);
        const char digit = DigitOf(c);
        if (digit == '\0')
            break;
        if (digit != '0' || to.size() > count + 2) // zeros in front count for nothing
            to += digit;
        name.remove_prefix(c.bytes);
    }
    const std::size_t digits = std::min<std::size_t>(to.size() - count - 2, 0xFFFF);
    to[count] = static_cast<char>(digits >> 8U);
    to[count + 1] = static_cast<char>(digits & 0xFFU);
    return name;
}

/// Bytes that all keys begin with.
std::size_t CommonPrefix(const std::vector<std::string_view>& keys) {
    std::size_t common = keys.empty() ? 0 : keys.front().size();
    for (const std::string_view key : keys) {
        const auto first = keys.front().substr(0, std::min(common, key.size()));
        common = static_cast<std::size_t>(std::mismatch(first.begin(), first.end(), key.begin()).first -
                                          first.begin());
    }
    return common;
}

/// The eight bytes from there as a number in the order of the bytes.
std::uint64_t EightBytes(std::string_view key, std::size_t from) {
    std::uint64_t value = 0;
    for (std::size_t i = from; i < from + sizeof value; ++i)
        value = value << 8U | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return value;
}

} // namespace

void AppendNameOrderKey(std::string& to, std::string_view name) {
    while (!name.empty()) {
        const char front = name.front();
        if (IsAscii(front) && !IsDigit(front)) {
            to += AsciiLower(front);
            name.remove_prefix(1);
            continue;
        }
        const Character c = FirstCharacter(name);
        if (DigitOf(c) != '\0') {
            name = AppendNumber(to, name);
            continue;
        }
        const std::int32_t folded = c.code < 0 ? c.code : Fold(c.code);
        if (folded == c.code) {
            to += name.substr(0, c.bytes);
        } else {
            utf8proc_uint8_t bytes[4];
            const auto used = utf8proc_encode_char(folded, bytes);
            to.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(used));
        }
        name.remove_prefix(c.bytes);
    }
}

int CompareNames(std::string_view a, std::string_view b) {
    std::string keyA;
    std::string keyB;
    AppendNameOrderKey(keyA, a);
    AppendNameOrderKey(keyB, b);
    const int order = keyA.compare(keyB);
    return order != 0 ? order : a.compare(b);
}

std::vector<std::uint32_t> OrderOfNames(const std::vector<std::string_view>& names, SortDirection direction) {
    std::string bytes; // all keys in one piece
    std::vector<std::size_t> ends;
    ends.reserve(names.size());
    for (const std::string_view name : names) {
        AppendNameOrderKey(bytes, name);
        ends.push_back(bytes.size());
    }
    std::vector<std::string_view> keys;
    keys.reserve(names.size());
    for (std::size_t begin = 0; const std::size_t end : ends) {
        keys.push_back(std::string_view(bytes).substr(begin, end - begin));
        begin = end;
    }

    // Most comparisons end within the first bytes after those that all names of a folder may share.
    struct Sorted {
        std::array<std::uint64_t, 2> head;
        std::uint32_t index;
    };
    const std::size_t common = CommonPrefix(keys);
    std::vector<Sorted> sorted;
    sorted.reserve(names.size());
    for (std::uint32_t i = 0; i < keys.size(); ++i)
        sorted.push_back({{EightBytes(keys[i], common), EightBytes(keys[i], common + 8)}, i});
    const bool ascending = direction == SortDirection::Ascending;
    std::sort(sorted.begin(), sorted.end(), [&](const Sorted& a, const Sorted& b) {
        if (a.head != b.head)
            return (a.head < b.head) == ascending;
        int order = keys[a.index].compare(keys[b.index]);
        if (order == 0)
            order = names[a.index].compare(names[b.index]);
        return order == 0 ? a.index < b.index : (order < 0) == ascending;
    });

    std::vector<std::uint32_t> order;
    order.reserve(sorted.size());
    for (const Sorted& entry : sorted)
        order.push_back(entry.index);
    return order;
}

} // namespace kirolane
