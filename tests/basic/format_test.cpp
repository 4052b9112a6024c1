#include <basic/date.h>

#include "support.h"

namespace quardele::basic {
namespace {

struct Case {
    const char16_t* pattern;
    const char16_t* text;
};

class FormatTest : public testing::TestWithParam<Case> {};

TEST_P(FormatTest, WritesTheParts) {
    EXPECT_EQ(Format(DateOf(2024, 3, 5, 8, 7, 9), GetParam().pattern), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Used, FormatTest,
                         testing::Values(Case{u"mm/dd/yyyy", u"03/05/2024"}, Case{u"mm/dd/yy", u"03/05/24"},
                                         Case{u"dd/mm/yyyy", u"05/03/2024"}, Case{u"yymmdd", u"240305"}));

INSTANTIATE_TEST_SUITE_P(Parts, FormatTest,
                         testing::Values(Case{u"d", u"5"}, Case{u"dd", u"05"}, Case{u"ddd", u"mar."},
                                         Case{u"dddd", u"mardi"}, Case{u"m", u"3"}, Case{u"mm", u"03"},
                                         Case{u"mmm", u"mars"}, Case{u"mmmm", u"mars"}, Case{u"yy", u"24"},
                                         Case{u"yyyy", u"2024"}, Case{u"h", u"8"}, Case{u"hh", u"08"},
                                         Case{u"n", u"7"}, Case{u"nn", u"07"}, Case{u"s", u"9"},
                                         Case{u"ss", u"09"}, Case{u"hh:nn:ss", u"08:07:09"},
                                         Case{u"DD/MM/YYYY", u"05/03/2024"},
                                         Case{u"dddd d mmmm yyyy", u"mardi 5 mars 2024"}, Case{u"", u""},
                                         Case{u"[dd]-.", u"[05]-."}));

TEST(FormatTest, EveryMonthAndDayHasItsFrenchName) {
    const char16_t* const months[] = {u"janvier",   u"février", u"mars",     u"avril",
                                      u"mai",       u"juin",    u"juillet",  u"août",
                                      u"septembre", u"octobre", u"novembre", u"décembre"};
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(Format(DateOf(2024, month, 1), u"mmmm"), months[month - 1]);
    }
    const char16_t* const days[] = {u"dimanche", u"lundi",    u"mardi", u"mercredi",
                                    u"jeudi",    u"vendredi", u"samedi"};
    for (int day = 0; day < 7; ++day) {
        EXPECT_EQ(Format(DateOf(2024, 3, 3 + day), u"dddd"), days[day]);
    }
    EXPECT_EQ(Format(DateOf(1850, 6, 15), u"dddd"), u"samedi");
}

TEST(FormatTest, SlashIsTheLocalesSeparator) {
    const LocaleGuard guard;
    SessionLocale().dateSeparator = u'-';
    EXPECT_EQ(Format(DateOf(2024, 3, 5), u"mm/dd/yyyy"), u"03-05-2024");
}

TEST(FormatTest, TextsAreReadAsDatesFirst) {
    EXPECT_EQ(Format(Variant(u"31/12/20"), u"yymmdd"), u"201231");
    EXPECT_EQ(Format(Variant(u"12/31/2020"), u"dd/mm/yyyy"), u"31/12/2020");
}

TEST(FormatTest, ATextThatIsNoDateComesBack) {
    EXPECT_EQ(Format(Variant(u"29/02/2023"), u"mm/dd/yyyy"), u"29/02/2023");
    EXPECT_EQ(Format(Variant(u"bientôt"), u"yymmdd"), u"bientôt");
    EXPECT_EQ(Format(Variant(u""), u"yymmdd"), u"");
}

TEST(FormatTest, EmptyAndNullGiveEmptyText) {
    EXPECT_EQ(Format(Variant(), u"dd/mm/yyyy"), u"");
    EXPECT_EQ(Format(Variant(Null()), u"dd/mm/yyyy"), u"");
}

TEST(FormatTest, NumbersAreDays) {
    EXPECT_EQ(Format(Variant(36526), u"dd/mm/yyyy"), u"01/01/2000");
}

}  // namespace
}  // namespace quardele::basic
