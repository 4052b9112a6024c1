#include <basic/text.h>

#include "support.h"

namespace quardele::basic {
namespace {

struct Pair {
    const char16_t* small;
    const char16_t* capital;
};

class LetterCaseTest : public testing::TestWithParam<Pair> {};

TEST_P(LetterCaseTest, SmallAndCapitalLettersBelongTogether) {
    const auto [small, capital] = GetParam();
    EXPECT_EQ(UCase(small), capital);
    EXPECT_EQ(LCase(capital), small);
    EXPECT_EQ(UCase(capital), capital);
    EXPECT_EQ(LCase(small), small);
    EXPECT_TRUE(EqualNoCase(small, capital));
}

INSTANTIATE_TEST_SUITE_P(Letters, LetterCaseTest,
                         testing::Values(Pair{u"abcxyz", u"ABCXYZ"},
                                         Pair{u"éèêëàâäùûüîïôöçñ", u"ÉÈÊËÀÂÄÙÛÜÎÏÔÖÇÑ"}, Pair{u"œæÿ", u"ŒÆŸ"},
                                         Pair{u"őűčřšžłńśź", u"ŐŰČŘŠŽŁŃŚŹ"},
                                         Pair{u"αβγωάέήίόύώϋ", u"ΑΒΓΩΆΈΉΊΌΎΏΫ"},
                                         Pair{u"абвгдяёђѓєѕіїјљњћќўџ", u"АБВГДЯЁЂЃЄЅІЇЈЉЊЋЌЎЏ"},
                                         Pair{u"ґ", u"Ґ"}, Pair{u"ạẽỹ", u"ẠẼỸ"}));

TEST(LetterCaseTest, WhatHasNoOtherCaseStays) {
    const Text others = u"0123 -_/\\.,'\"@[]`{}~×÷ßıµ€漢";
    EXPECT_EQ(UCase(others), others);
    EXPECT_EQ(LCase(others), others);
}

TEST(LetterCaseTest, NoUnitChangesTheLengthAndCapitalsAreStable) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const Text text(1, static_cast<char16_t>(unit));
        const Text capital = UCase(text);
        ASSERT_EQ(capital.size(), 1U) << unit;
        ASSERT_EQ(UCase(capital), capital) << unit;
        ASSERT_EQ(LCase(LCase(text)), LCase(text)) << unit;
        ASSERT_EQ(UCase(LCase(capital)), capital) << unit;
    }
}

TEST(EqualNoCaseTest, LooksAtLengthAndLetters) {
    EXPECT_TRUE(EqualNoCase(u"T_Véhicules", u"t_VÉHICULES"));
    EXPECT_TRUE(EqualNoCase(u"", u""));
    EXPECT_FALSE(EqualNoCase(u"abc", u"ab"));
    EXPECT_FALSE(EqualNoCase(u"ab", u"abc"));
}

TEST(EqualNoCaseTest, AccentsCount) {
    EXPECT_FALSE(EqualNoCase(u"VEHICULE", u"VÉHICULE"));
}

TEST(EqualNoCaseTest, BothSmallSigmasAreTheCapitalOne) {
    EXPECT_TRUE(EqualNoCase(u"ΟΔΟΣ", u"οδος"));
}

}  // namespace
}  // namespace quardele::basic
