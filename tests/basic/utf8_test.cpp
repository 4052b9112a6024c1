#include <basic/text.h>

#include "support.h"

namespace quardele::basic {
namespace {

TEST(Utf8Test, WellFormedTextsComeAndGoUnchanged) {
    const std::string utf8 =
        "A\x7F\xC2\x80\xC3\xA9\xDF\xBF\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    const Text text = u"A\u007F\u0080\u00E9\u07FF\u0800\u20AC\uFFFF\U00010000\U0010FFFF";
    EXPECT_EQ(FromUtf8(utf8), text);
    EXPECT_EQ(ToUtf8(text), utf8);
}

TEST(Utf8Test, EveryUnitOutsideTheSurrogatesComesBack) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const Text text(1, static_cast<char16_t>(unit));
        const bool surrogate = unit >= 0xD800 && unit <= 0xDFFF;
        ASSERT_EQ(FromUtf8(ToUtf8(text)), surrogate ? Text(u"\uFFFD") : text) << unit;
    }
}

TEST(Utf8Test, ZeroIsACharacterLikeAnyOther) {
    EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), (Text{u'a', u'\0', u'b'}));
    EXPECT_EQ(ToUtf8(Text{u'a', u'\0', u'b'}), std::string("a\0b", 3));
}

TEST(Utf8Test, LoneSurrogatesAreReplaced) {
    EXPECT_EQ(ToUtf8(Text{u'a', char16_t{0xD83D}}), "a\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Text{char16_t{0xDE97}, u'a'}),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(ToUtf8(Text{char16_t{0xD83D}, char16_t{0xD83D}, char16_t{0xDE97}}),
              "\xEF\xBF\xBD\xF0\x9F\x9A\x97");
}

struct IllFormed {
    const char* utf8;
    const char16_t* text;
};

class IllFormedUtf8Test : public testing::TestWithParam<IllFormed> {};

TEST_P(IllFormedUtf8Test, IsReplacedAndReadingGoesOnBehindIt) {
    EXPECT_EQ(FromUtf8(GetParam().utf8), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Sequences, IllFormedUtf8Test,
                         testing::Values(IllFormed{"a\xE9"
                                                   "b",
                                                   u"a\uFFFDb"},                    // Latin-1
                                         IllFormed{"\x80x", u"\uFFFDx"},            // no first byte
                                         IllFormed{"\xC3", u"\uFFFD"},              // cut off
                                         IllFormed{"\xE2\x82", u"\uFFFD"},          // cut off later
                                         IllFormed{"\xE2\x82x", u"\uFFFDx"},        // broken off
                                         IllFormed{"\xC0\x80x", u"\uFFFD\uFFFDx"},  // longer than needed
                                         IllFormed{"\xE0\x80\x80x", u"\uFFFDx"},    // longer than needed
                                         IllFormed{"\xED\xA0\x80x", u"\uFFFDx"},    // a surrogate
                                         IllFormed{"\xF4\x90\x80\x80x",
                                                   u"\uFFFDx"},  // beyond the last character
                                         IllFormed{"\xFFx", u"\uFFFDx"}));

}  // namespace
}  // namespace quardele::basic
