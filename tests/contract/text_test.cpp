#include "contract/text.h"

#include "contract/core/characters.h"
#include "contract/numbers.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane {
namespace {

TEST(Text, CountsAndCutsByCharacters) {
    EXPECT_EQ(Len("00：00：00"), 8);
    EXPECT_EQ(Left("映画の夜.mov", 3), "映画の");
    EXPECT_EQ(Left("ab", 5), "ab");
    EXPECT_EQ(Left("ab", -1), "");
    EXPECT_EQ(Mid("映画.mp4", 3), ".mp4");
    EXPECT_EQ(Mid("a long name of ASCII 夜.mov", 23), ".mov");
    EXPECT_EQ(Mid("abc", 4), "");
    EXPECT_EQ(InStr("a：b：c", "b"), 3);
    EXPECT_EQ(InStr("Root:Desktop", "desktop"), 0) << "case counts";
}

TEST(Text, AStartBelowOneGivesTheWholeString) {
    for (const int start : {1, 0, -3, std::numeric_limits<int>::min()})
        EXPECT_EQ(Mid("qt", start), "qt");
    const std::string name = ".mp4";
    EXPECT_EQ(Mid(name, Len(name) - 4), name) << "the tail of a name shorter than the tail";
}

TEST(Text, EachByteThatIsNoUtf8IsACharacterAndPassesThrough) {
    const std::string latin = "caf\xE9.mov"; // Latin 1
    EXPECT_EQ(Len(latin), 8);
    EXPECT_EQ(Mid(latin, 4), "\xE9.mov");
    EXPECT_EQ(Left("\xE6\x98.mov", 2), "\xE6\x98") << "a character cut short is two";
    EXPECT_EQ(Len("\xED\xA0\x80"), 3) << "a surrogate is no character";
    EXPECT_TRUE(Equals(latin, "CAF\xE9.MOV"));
    EXPECT_FALSE(Equals(latin, "café.mov"));
}

TEST(Text, CharactersDecodedInPlaceAreThoseOfTheGeneralDecoder) {
    const unsigned char edges[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xE3, 0xFF};
    for (int lead = 0x80; lead <= 0xFF; ++lead)
        for (const unsigned char second : edges)
            for (const unsigned char third : edges)
                for (const unsigned char fourth : edges) {
                    const char bytes[] = {static_cast<char>(lead), static_cast<char>(second),
                                          static_cast<char>(third), static_cast<char>(fourth)};
                    for (std::size_t length = 1; length <= sizeof bytes; ++length) {
                        const auto fast = FirstCharacter({bytes, length});
                        const auto general = DecodeFirst({bytes, length});
                        ASSERT_EQ(fast.code, general.code) << std::hex << lead << int{second} << int{third};
                        ASSERT_EQ(fast.bytes, general.bytes);
                    }
                }
}

TEST(Text, EqualityFoldsCaseByUnicodesSimpleFoldingAndNothingElse) {
    const struct {
        const char* a;
        const char* b;
        bool equal;
    } cases[] = {
        {"true", "TRUE", true},    {".ｍｏｖ", ".ＭＯＶ", true},
        {"É", "é", true},          {"Σ", "ς", true},
        {"\u212A", "k", true}, // the Kelvin sign
        {"ß", "ẞ", true},          {"ß", "ss", false},
        {"İ", "i", false},         {"ı", "I", false},
        {"I", "i", true},          {"Ａ", "A", false}, // width is no case
        {"が", "か\u3099", false},                     // composed and decomposed are different names
        {"ab", "abc", false},      {"", "", true},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(Equals(a, b), equal) << a << " and " << b;
        EXPECT_EQ(Equals(b, a), equal) << b << " and " << a;
    }
}

TEST(Text, NumbersAreWrittenPlainAndShort) {
    EXPECT_EQ(Str(0), "0");
    EXPECT_EQ(Str(-7), "-7");
    EXPECT_EQ(Str(0.1234F), "0.1234");
    EXPECT_EQ(Str(1.0F), "1");
    EXPECT_EQ(Str(0.00001F), "0.00001");
    EXPECT_EQ(Str(-12.345F), "-12.345");
    EXPECT_EQ(Str(16777216.0F), "16777216");
    EXPECT_EQ(Str(-0.0F), "0");
}

TEST(Text, ANumberIsReadFromTheStartOfAString) {
    EXPECT_EQ(CDbl("100"), 100.0);
    EXPECT_EQ(CDbl(" -1.5 s"), -1.5);
    EXPECT_EQ(CDbl("1e5"), 1.0) << "no exponents";
    for (const char* none : {"", "abc", "-", "nan", "-inf", "１", "+"})
        EXPECT_EQ(CDbl(none), 0.0) << none;
}

TEST(Text, RealsBecomeIntegersByDroppingTheFraction) {
    EXPECT_EQ(ToInteger(2.999), 2);
    EXPECT_EQ(ToInteger(-2.999), -2);
    EXPECT_EQ(ToInteger(1e12), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ToInteger(-1e12), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInteger(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(Names, StandInTheOrderAPersonExpects) {
    const std::vector<std::string> expected = {
        "",           ".hidden",      "clip 1.mov",  "Clip 1a.mov",
        "clip 2.mov", "clip 002.mp4", "clip 10.mov", "Clip 10b.mov",
        "clips",      "第１話",       "第2話",       "第１０話",
    };
    auto shuffled = expected;
    std::reverse(shuffled.begin(), shuffled.end());
    std::sort(shuffled.begin(), shuffled.end(),
              [](const auto& a, const auto& b) { return CompareNames(a, b) < 0; });
    EXPECT_EQ(shuffled, expected);
}

TEST(Names, OnlyIdenticalNamesCompareEqual) {
    EXPECT_EQ(CompareNames("a1", "a1"), 0);
    for (const auto& [a, b] : {std::pair{"A1", "a1"}, {"a01", "a1"}, {"a１", "a1"}, {"\xE9", "é"}}) {
        EXPECT_NE(CompareNames(a, b), 0);
        EXPECT_EQ(CompareNames(a, b) < 0, CompareNames(b, a) > 0);
    }
    EXPECT_LT(CompareNames("99999999999999999999998", "99999999999999999999999"), 0) << "beyond any integer";
}

} // namespace
} // namespace kirolane
