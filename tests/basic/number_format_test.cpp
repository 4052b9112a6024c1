// Values written after patterns of numbers, dates and texts.
#include <basic/number_format.h>

#include <basic/conversion.h>
#include <basic/date.h>

#include "support.h"

namespace quardele::basic {
namespace {

struct Case {
    Variant value;
    const char16_t* pattern;
    const char16_t* text;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << ToUtf8(c.pattern);
}

class FormatValueTest : public testing::TestWithParam<Case> {};

TEST_P(FormatValueTest, FollowsThePattern) {
    EXPECT_EQ(ToUtf8(FormatValue(GetParam().value, GetParam().pattern)), ToUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Digits, FormatValueTest,
    testing::Values(Case{1234.5, u"0", u"1235"}, Case{1234.5, u"0.00", u"1234,50"}, Case{0, u"#", u""},
                    Case{0, u"#.##", u","}, Case{0.5, u".00", u",50"}, Case{12.5, u".0", u"12,5"},
                    Case{7, u"0000", u"0007"}, Case{0.1, u"0.0##", u"0,1"}, Case{0.125, u"0.0##", u"0,125"},
                    Case{2.675, u"0.00", u"2,68"}, Case{-2.5, u"0", u"-3"}, Case{9.999, u"0.00", u"10,00"},
                    Case{1e20, u"0", u"100000000000000000000"}, Case{1e-20, u"0.00", u"0,00"},
                    Case{true, u"0", u"-1"}, Case{u"12,5", u"0.00", u"12,50"},
                    Case{u"douze", u"0.00", u"douze"}, Case{Currency{123456789}, u"0.0000", u"12345,6789"},
                    Case{0.1F, u"0.00", u"0,10"}, Case{DateOf(1900, 1, 1), u"0", u"2"}));

INSTANTIATE_TEST_SUITE_P(Signs, FormatValueTest,
                         testing::Values(Case{-0.001, u"0", u"0"}, Case{-0.001, u"0.00", u"0,00"},
                                         Case{-0.0, u"0", u"0"}, Case{-5, u"0;;\"zéro\"", u"-5"},
                                         Case{-5, u"0;(0)", u"(5)"}, Case{0, u"0;(0)", u"0"},
                                         Case{0, u"0;(0);\"zéro\"", u"zéro"},
                                         Case{Null(), u"0;(0);0;\"rien\"", u"rien"},
                                         Case{Null(), u"0.00", u""}, Case{5, u"\"plus\";\"moins\"", u"plus"},
                                         Case{-5, u"\"plus\";\"moins\"", u"moins"}, Case{-3, u"$0", u"-$3"}));

INSTANTIATE_TEST_SUITE_P(Groups, FormatValueTest,
                         testing::Values(Case{1234567, u"#,##0", u"1\u00A0234\u00A0567"},
                                         Case{123, u"#,##0", u"123"}, Case{7, u"0,000", u"0\u00A0007"},
                                         Case{1234567, u"0,", u"1235"}, Case{1234567, u"0,.0", u"1234,6"},
                                         Case{1500000, u"0,,.0", u"1,5"},
                                         Case{1234567890, u"#,##0,", u"1\u00A0234\u00A0568"},
                                         Case{123456, u"00-00-00", u"12-34-56"},
                                         Case{1234567, u"00-00-00", u"123-45-67"},
                                         Case{0.256, u"0%", u"26%"}));

INSTANTIATE_TEST_SUITE_P(Powers, FormatValueTest,
                         testing::Values(Case{12345, u"0.00E+00", u"1,23E+04"},
                                         Case{0.00012, u"0.0E-0", u"1,2E-4"},
                                         Case{12345, u"0.0e-00", u"1,2e04"}, Case{9.99, u"0.0E+0", u"1,0E+1"},
                                         Case{12345, u"##0.0E+0", u"123,5E+2"}, Case{0, u"0.0E+0", u"0,0E+0"},
                                         Case{-5, u"0E+0", u"-5E+0"}));

INSTANTIATE_TEST_SUITE_P(Literals, FormatValueTest,
                         testing::Values(Case{12, u"0 km", u"12 km"}, Case{12, u"\"n° 0\" 0", u"n° 0 12"},
                                         Case{12, u"\\#0", u"#12"}, Case{12, u"0 \"sans fin", u"12 sans fin"},
                                         Case{12, u"0\\", u"12"}, Case{12, u"", u"12"}));

const Date kMorning = DateOf(2026, 12, 31, 9, 5, 7);
const Date kEvening = DateOf(2026, 12, 31, 21, 5, 7);
const Date kMidnight = DateOf(2026, 12, 31);

INSTANTIATE_TEST_SUITE_P(
    Dates, FormatValueTest,
    testing::Values(Case{kMorning, u"hh:mm", u"09:05"}, Case{kMorning, u"h \"h\" m", u"9 h 5"},
                    Case{kMorning, u"mm/hh", u"12/09"}, Case{kMorning, u"hh dd/mm", u"09 31/12"},
                    Case{kEvening, u"h:nn AM/PM", u"9:05 PM"}, Case{kEvening, u"h:nn am/pm", u"9:05 pm"},
                    Case{kMorning, u"hh A/P", u"09 A"}, Case{kEvening, u"hha/p", u"09p"},
                    Case{kMidnight, u"h AM/PM", u"12 AM"}, Case{kEvening, u"hh:nn AMPM", u"09:05 "},
                    Case{kMorning, u"c", u"31/12/2026 09:05:07"}, Case{kMidnight, u"c", u"31/12/2026"},
                    Case{kMorning, u"ddddd", u"31/12/2026"},
                    Case{kMorning, u"dddddd", u"jeudi 31 décembre 2026"},
                    Case{kMorning, u"ttttt", u"09:05:07"}, Case{kMorning, u"q y w ww", u"4 365 5 53"},
                    Case{kMorning, u"\"an\" yyyy", u"an 2026"}, Case{kMorning, u"\\d d", u"d 31"},
                    Case{u"31/12/2026", u"yymmdd", u"261231"}, Case{u"bientôt", u"dd/mm", u"bientôt"},
                    Case{46387, u"dd/mm/yyyy", u"31/12/2026"}, Case{Null(), u"dd/mm", u""}));

INSTANTIATE_TEST_SUITE_P(Texts, FormatValueTest,
                         testing::Values(Case{u"ab", u"@@@@", u"  ab"}, Case{u"ab", u"!@@@@", u"ab  "},
                                         Case{u"ab", u"&&&&", u"ab"}, Case{u"abcd", u"@@-@@", u"ab-cd"},
                                         Case{u"abc", u"@-@", u"ab-c"}, Case{u"abc", u"!@-@", u"a-bc"},
                                         Case{u"Été", u">", u"ÉTÉ"}, Case{u"Été", u"<@@@@", u" été"},
                                         Case{u"", u"@;\"vide\"", u"vide"},
                                         Case{Null(), u"@;\"vide\"", u"vide"}, Case{Null(), u"@@", u""},
                                         Case{12, u"@@@", u" 12"}, Case{u"ab", u"[@@]", u"[ab]"},
                                         Case{u"ab", u"\"x\"", u"x"}));

TEST(FormatWeeksTest, RulesCountTheWeeks) {
    EXPECT_EQ(FormatValue(DateOf(2026, 12, 27), u"w ww"), u"1 53");
    EXPECT_EQ(FormatValue(DateOf(2026, 12, 27), u"w ww", {2, 2}), u"7 52");
    EXPECT_EQ(ErrorOf([] { (void)FormatValue(DateOf(2026, 12, 27), u"ww", {9, 1}); }), 5);
}

TEST(FormatLengthTest, LongPatternsAreWrittenQuickly) {
    const std::size_t kLong = 65000;
    EXPECT_EQ(FormatValue(1.5, u"0." + Text(kLong, u'#')), u"1,5");
    EXPECT_EQ(FormatValue(1.5, Text(kLong, u'0')).size(), kLong);
    EXPECT_EQ(FormatValue(u"a", Text(kLong, u'@')).size(), kLong);
    EXPECT_EQ(FormatValue(1.5, Text(kLong, u';')), u"");
}

}  // namespace
}  // namespace quardele::basic
