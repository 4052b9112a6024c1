// The order of texts, by keys that were read out of real files and by what people expect.

#include <jet/collation.h>

#include <gtest/gtest.h>

#include <cstdio>

namespace quardele::jet::test {
namespace {

std::string HexKey(TextView text) {
    std::string hex;
    for (const char byte : SortKey(text)) {
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        hex += pair;
    }
    return hex;
}

TEST(Collation, KeysAreThoseOfTheOriginalEngine) {
    EXPECT_EQ(HexKey(u""), "0100");
    EXPECT_EQ(HexKey(u"ab"), "4A4C0100");
    EXPECT_EQ(HexKey(u"AB"), "4A4C0100");
    EXPECT_EQ(HexKey(u"co-op"),
              "4D6464660101010180"
              "0F068200");
    EXPECT_EQ(HexKey(u"é"), "51010E00");
    EXPECT_EQ(HexKey(u"aé"), "4A5101020E00");
    EXPECT_EQ(HexKey(u"d'a"),
              "4F4A0101010180"
              "0B068000");
    EXPECT_EQ(HexKey(u"ß"), "6B6B0100");
    EXPECT_EQ(HexKey(u"Œ"), "64510100");
}

TEST(Collation, CaseAndTrailingBlanksDoNotCount) {
    EXPECT_TRUE(Equal(u"Renault", u"RENAULT   "));
    EXPECT_TRUE(Equal(u"", u"   "));
    EXPECT_FALSE(Equal(u"Renault", u" Renault"));
    EXPECT_TRUE(Equal(u"straße", u"STRASSE"));
}

TEST(Collation, AccentsDecideAfterLetters) {
    EXPECT_TRUE(Compare(u"cote", u"côte") < 0);
    EXPECT_TRUE(Compare(u"côte", u"coteau") < 0);
    EXPECT_TRUE(Compare(u"Éric", u"Eric") > 0);
    EXPECT_TRUE(Compare(u"Éric", u"Erick") < 0);
    EXPECT_FALSE(Equal(u"garcon", u"garçon"));
}

TEST(Collation, HyphensAndApostrophesWeighLeast) {
    EXPECT_TRUE(Compare(u"AB-123-CD", u"AB123CD") > 0);
    EXPECT_TRUE(Compare(u"AB-123-CD", u"AB123CE") < 0);
    EXPECT_TRUE(Compare(u"l'an", u"lancer") < 0);
    EXPECT_FALSE(Equal(u"co-op", u"coop"));
    EXPECT_FALSE(Equal(u"co-op", u"coo-p"));
}

TEST(Collation, BlanksComeBeforePunctuationDigitsAndLetters) {
    const TextView inOrder[] = {u"", u"a b", u"a!b", u"a1", u"aa", u"ab", u"b", u"é", u"z"};
    for (std::size_t i = 1; i < std::size(inOrder); ++i) {
        EXPECT_TRUE(Compare(inOrder[i - 1], inOrder[i]) < 0) << i;
    }
}

TEST(Collation, CompareAgreesWithTheKeysForAllPairsOfManyTexts) {
    std::vector<Text> texts;
    const TextView letters = u"aAéÉ-' œzß\u0301Ω€\u4E2D1";
    for (std::size_t i = 0; i < letters.size(); ++i) {
        texts.emplace_back(1, letters[i]);
        for (std::size_t j = 0; j < letters.size(); ++j) {
            texts.push_back({letters[i], letters[j]});
            texts.push_back({letters[i], u'b', letters[j]});
        }
    }
    for (const Text& left : texts) {
        for (const Text& right : texts) {
            const auto byKeys = SortKey(left) <=> SortKey(right);
            ASSERT_EQ(Compare(left, right) < 0, byKeys < 0);
            ASSERT_EQ(Compare(left, right) == 0, byKeys == 0);
        }
    }
}

// By a published rule; no file of the original engine with such texts in an index is at hand.
TEST(Collation, HalvesOfCharactersBeyondTheFirst65536FollowTheirRule) {
    const std::pair<char16_t, const char*> keys[] = {
        {0xD800, "B002013F00"}, {0xDBFF, "B401013F00"}, {0xDC00, "B4F8013F00"}, {0xDC07, "B4FF013F00"},
        {0xDC08, "B502013F00"}, {0xDD05, "B5FF013F00"}, {0xDD06, "B602013F00"}, {0xDE03, "B6FF013F00"},
        {0xDE04, "B702013F00"}, {0xDF01, "B7FF013F00"}, {0xDF02, "B802013F00"}, {0xDFFF, "B8FF013F00"}};
    for (const auto& [unit, key] : keys) {
        EXPECT_EQ(HexKey(Text(1, unit)), key);
    }
    EXPECT_EQ(HexKey(u"a\U0001F600"), "4AB03FB6FC01023F3F00");
    EXPECT_TRUE(HasSortKey(u"a\U0001F600"));
}

TEST(Collation, WritingSystemsWithoutATableHaveNoKey) {
    using namespace std::string_view_literals;
    // Armenian, Hebrew, Arabic, Thai, Greek with accents of old, an arrow, kana, Chinese, Hangul, private
    // use.
    for (const char16_t unit : u"\u0531\u05D0\u0627\u0E01\u1F00\u21A0\u3042\u4E2D\uAC00\uE000"sv) {
        EXPECT_FALSE(HasSortKey(Text{u'a', unit})) << static_cast<unsigned>(unit);
    }
}

TEST(Collation, UnitsOutsideTheTablesComeLastAndAreTold) {
    EXPECT_TRUE(HasSortKey(u"Citroën C4 – 1,6 l € Мир"));
    EXPECT_FALSE(HasSortKey(u"\u4E2D"));
    EXPECT_TRUE(Compare(u"\u4E2D", u"zzz") > 0);
    EXPECT_TRUE(Compare(u"\u4E2D", u"\u4E2E") < 0);
}

}  // namespace
}  // namespace quardele::jet::test
