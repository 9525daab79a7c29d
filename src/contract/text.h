#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Strings are UTF-8 bytes in std::string. Positions and lengths count characters: one Unicode code point is
/// one character, and so is each byte that is not part of valid UTF-8. Such bytes pass through unchanged.
namespace kirolane {

/// Number of characters.
std::int32_t Len(std::string_view s);

/// The first n characters; all of them if n is larger, none if n is 0 or negative.
std::string Left(std::string_view s, std::int32_t n);

/// The rest of s from the one-based character `start`; the whole of s for a start below 1, "" past the end.
std::string Mid(std::string_view s, std::int32_t start);

/// One-based character position of the first exact match (case counts), 0 if there is none.
std::int32_t InStr(std::string_view haystack, std::string_view needle);

/// Decimal digits, a minus sign if negative, no padding.
std::string Str(std::int32_t value);

/// Shortest plain decimal form that reads back as the same single: "0.5", "1", "-12.345", never an exponent.
std::string Str(float value);

/// The value of a decimal number at the start of s, blanks before it allowed; 0 if there is none.
double CDbl(std::string_view s);

/// Equality of whole strings without case, by Unicode's simple folding: full-width and accented letters fold
/// too, nothing else does ("ss" is not "ß"). Every comparison of the logic is of this kind.
bool Equals(std::string_view a, std::string_view b);

/// The order in which a person expects names: letters without case, runs of digits by their number ("2"
/// before "10", full-width digits alike), equal names by their bytes. Negative, 0 or positive; 0 only for
/// identical bytes.
int CompareNames(std::string_view a, std::string_view b);

} // namespace kirolane
