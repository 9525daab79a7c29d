#include "contract/core/characters.h"

#include <cstring>

#include <utf8proc.h>

namespace kirolane {

Character DecodeFirst(std::string_view s) {
    utf8proc_int32_t code = -1;
    const auto used = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(s.data()),
                                       static_cast<utf8proc_ssize_t>(s.size()), &code);
    return used > 0 ? Character{code, static_cast<std::size_t>(used)} : Character{-1, 1};
}

std::size_t AsciiRun(std::string_view s) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t at = 0;
    for (std::uint64_t eight = 0; at + sizeof eight <= s.size(); at += sizeof eight) {
        std::memcpy(&eight, s.data() + at, sizeof eight);
        if ((eight & kHighBits) != 0)
            break;
    }
    while (at < s.size() && IsAscii(s[at]))
        ++at;
    return at;
}

std::int32_t Fold(std::int32_t code) {
    if (code < 0x80)
        return AsciiLower(static_cast<char>(code));
    constexpr std::int32_t kFirstCjk = 0x2E80;
    constexpr std::int32_t kLastCjk = 0xA4CF;
    if (code >= kFirstCjk && code <= kLastCjk)
        return code; // no script there has case
    // By way of the upper case, so that letters with several small forms meet. The dotted and the dotless i
    // of Turkish have no simple folding.
    constexpr std::int32_t kDottedI = 0x130;
    constexpr std::int32_t kDotlessI = 0x131;
    if (code == kDottedI || code == kDotlessI)
        return code;
    return utf8proc_tolower(utf8proc_toupper(code));
}

} // namespace kirolane
