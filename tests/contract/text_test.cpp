#include "contract/text.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

TEST(Text, CountsAndCutsByCharacters) {
    EXPECT_EQ(Len("00：00：00"), 8);
    EXPECT_EQ(Left("映画の夜.mov", 3), "映画の");
    EXPECT_EQ(Mid("a long name of ASCII 夜.mov", 23), ".mov");
    for (const int start : {1, 0, -3, std::numeric_limits<int>::min()})
        EXPECT_EQ(Mid("qt", start), "qt") << "the tail of a name shorter than the tail";
    EXPECT_EQ(InStr("a：b：c", "b"), 3);
    EXPECT_EQ(InStr("Root:Desktop", "desktop"), 0) << "case counts";
}

TEST(Text, EachByteThatIsNoUtf8IsACharacterAndPassesThrough) {
    const std::string latin = "caf\xE9.mov"; // Latin 1
    EXPECT_EQ(Len(latin), 8);
    EXPECT_EQ(Mid(latin, 4), "\xE9.mov");
    EXPECT_EQ(Left("\xE6\x98.mov", 2), "\xE6\x98") << "a character cut short is two";
    for (const char* none :
         {"\xED\xA0\x80", "\xE0\x80\x80", "\xE6\x98x"}) // a surrogate, too long a form, cut short
        EXPECT_EQ(Len(none), 3);
    EXPECT_TRUE(Equals(latin, "CAF\xE9.MOV"));
    EXPECT_FALSE(Equals(latin, "caf\xE8.mov"));
}

TEST(Text, EqualityFoldsCaseByUnicodesSimpleFoldingAndNothingElse) {
    using Pairs = std::vector<std::pair<const char*, const char*>>;
    const Pairs same = {
        {"true", "TRUE"}, {".ｍｏｖ", ".ＭＯＶ"}, {"É", "é"}, {"Σ", "ς"}, {"ß", "ẞ"}, {"k", "\u212A"},
    };
    const Pairs other = {
        // width is no case; composed and decomposed are different names
        {"ß", "ss"}, {"İ", "i"}, {"ı", "I"}, {"Ａ", "A"}, {"ab", "abc"}, {"が", "か\u3099"},
    };
    for (const bool equal : {true, false})
        for (const auto& [a, b] : equal ? same : other) {
            EXPECT_EQ(Equals(a, b), equal) << a << " and " << b;
            EXPECT_EQ(Equals(b, a), equal) << b << " and " << a;
        }
}

TEST(Names, StandInTheOrderAPersonExpectsAndOnlyIdenticalOnesAreEqual) {
    const std::string large(22, '9'); // beyond any integer
    const std::vector<std::string> names = {
        "",      ".hidden",    large + "8",   large + "9",  "A1",           "a01",         "a1",
        "a１",   "clip 1.mov", "Clip 1a.mov", "clip 2.mov", "clip 002.mp4", "clip 10.mov", "Clip 10b.mov",
        "clips", "é",          "第１話",      "第2話",      "第１０話",     "\xE9",
    };
    for (const auto& a : names)
        for (const auto& b : names) {
            EXPECT_EQ(CompareNames(a, b) < 0, &a < &b) << a << " and " << b;
            EXPECT_EQ(CompareNames(a, b) == 0, &a == &b) << a << " and " << b;
        }
}

} // namespace kirolane::tests
