#include <basic/conversion.h>

#include "support.h"

namespace quardele::basic {
namespace {

struct Case {
    const char16_t* text;
    Date date;
};

class ReadableDateTest : public testing::TestWithParam<Case> {};

TEST_P(ReadableDateTest, IsRead) {
    const auto date = ParseDate(GetParam().text);
    ASSERT_TRUE(date) << ToUtf8(GetParam().text);
    EXPECT_EQ(*date, GetParam().date) << ToUtf8(GetParam().text) << " read as " << ToUtf8(CStr(*date));
}

INSTANTIATE_TEST_SUITE_P(
    Separators, ReadableDateTest,
    testing::Values(Case{u"31/12/2020", DateOf(2020, 12, 31)}, Case{u"31-12-2020", DateOf(2020, 12, 31)},
                    Case{u"31.12.2020", DateOf(2020, 12, 31)}, Case{u"31 12 2020", DateOf(2020, 12, 31)},
                    Case{u"  31/12/2020  ", DateOf(2020, 12, 31)},
                    Case{u"31 / 12 / 2020", DateOf(2020, 12, 31)}, Case{u"31/12-2020", DateOf(2020, 12, 31)},
                    Case{u"1/2/2020", DateOf(2020, 2, 1)}, Case{u"05/03/2024", DateOf(2024, 3, 5)}));

INSTANTIATE_TEST_SUITE_P(
    Years, ReadableDateTest,
    testing::Values(Case{u"31/12/20", DateOf(2020, 12, 31)}, Case{u"31/12/00", DateOf(2000, 12, 31)},
                    Case{u"31/12/5", DateOf(2005, 12, 31)}, Case{u"31/12/29", DateOf(2029, 12, 31)},
                    Case{u"31/12/30", DateOf(1930, 12, 31)}, Case{u"31/12/99", DateOf(1999, 12, 31)},
                    Case{u"31/12/100", DateOf(100, 12, 31)}, Case{u"31/12/9999", DateOf(9999, 12, 31)},
                    Case{u"2020-12-31", DateOf(2020, 12, 31)}, Case{u"2024/03/05", DateOf(2024, 3, 5)},
                    Case{u"29/02/2024", DateOf(2024, 2, 29)}, Case{u"29/02/2000", DateOf(2000, 2, 29)}));

INSTANTIATE_TEST_SUITE_P(DayAndMonthChangePlacesWhenTheyCanOnlyBeReadSo, ReadableDateTest,
                         testing::Values(Case{u"12/31/2020", DateOf(2020, 12, 31)},
                                         Case{u"02/29/2024", DateOf(2024, 2, 29)},
                                         Case{u"2020/31/12", DateOf(2020, 12, 31)},
                                         Case{u"12/11/2020", DateOf(2020, 11, 12)}));

INSTANTIATE_TEST_SUITE_P(
    MonthNames, ReadableDateTest,
    testing::Values(Case{u"5 mars 2024", DateOf(2024, 3, 5)}, Case{u"5 MARS 24", DateOf(2024, 3, 5)},
                    Case{u"5-mar-2024", DateOf(2024, 3, 5)}, Case{u"1 février 2024", DateOf(2024, 2, 1)},
                    Case{u"1 fevrier 2024", DateOf(2024, 2, 1)}, Case{u"1 Févr. 2024", DateOf(2024, 2, 1)},
                    Case{u"15 AOÛT 2023", DateOf(2023, 8, 15)}, Case{u"15 aout 2023", DateOf(2023, 8, 15)},
                    Case{u"5-janv.-2024", DateOf(2024, 1, 5)},
                    Case{u"25 december 2023", DateOf(2023, 12, 25)},
                    Case{u"March 5 2024", DateOf(2024, 3, 5)}, Case{u"2024 mars 5", DateOf(2024, 3, 5)},
                    Case{u"1 juil. 2024", DateOf(2024, 7, 1)}, Case{u"1 jun 2024", DateOf(2024, 6, 1)},
                    Case{u"mars 2024", DateOf(2024, 3, 1)}, Case{u"12/2020", DateOf(2020, 12, 1)},
                    Case{u"2020/12", DateOf(2020, 12, 1)}));

INSTANTIATE_TEST_SUITE_P(Times, ReadableDateTest,
                         testing::Values(Case{u"31/12/2020 10:30", DateOf(2020, 12, 31, 10, 30, 0)},
                                         Case{u"31.12.20 8:05:09", DateOf(2020, 12, 31, 8, 5, 9)},
                                         Case{u"5 mars 2024 23:59:59 ", DateOf(2024, 3, 5, 23, 59, 59)},
                                         Case{u"10:30", Date{10.5 / 24}}, Case{u"00:00", Date{0}},
                                         Case{u"31/12/1890 06:00", Date{-3286.25}}));

TEST(ParseDateTest, AMissingYearIsTheCurrentOne) {
    const int year = CivilOf(Today()).year;
    EXPECT_EQ(ParseDate(u"31/12"), DateOf(year, 12, 31));
    EXPECT_EQ(ParseDate(u"12/31"), DateOf(year, 12, 31));
    EXPECT_EQ(ParseDate(u"1.5"), DateOf(year, 5, 1));
    EXPECT_EQ(ParseDate(u"5 mars"), DateOf(year, 3, 5));
    EXPECT_EQ(ParseDate(u"5/3 14:00"), DateOf(year, 3, 5, 14, 0, 0));
}

class UnreadableDateTest : public testing::TestWithParam<const char16_t*> {};

TEST_P(UnreadableDateTest, IsRefused) {
    EXPECT_FALSE(ParseDate(GetParam())) << ToUtf8(GetParam());
}

INSTANTIATE_TEST_SUITE_P(NoDay, UnreadableDateTest,
                         testing::Values(u"29/02/2023", u"29/02/1900", u"31/04/2024", u"32/01/2024",
                                         u"13/13/2024", u"00/12/2020", u"31/00/2020", u"31/12/0099",
                                         u"31 avril 2024", u"0 mars 2024", u"31/02", u"29/02/23"));

INSTANTIATE_TEST_SUITE_P(NoDate, UnreadableDateTest,
                         testing::Values(u"", u"   ", u"12", u"2020", u"12abc", u"abc", u"NULL", u"VIDE",
                                         u"1,5", u"31//12", u"31/12/", u"/31/12", u"31/12/2020/1",
                                         u"31/12/20200", u"31122020", u"mars", u"mars avril 2024",
                                         u"5 jui 2024", u"5 ma 2024", u"5 foo 2024", u"100/12/2020",
                                         u"1/100/2020", u"-1/12/2020", u"31/12/2020x", u"2020/12/2020",
                                         u"2020 mars 2020", u"32 mars"));

INSTANTIATE_TEST_SUITE_P(NoTime, UnreadableDateTest,
                         testing::Values(u"24:00", u"10:60", u"10:30:60", u"10:", u":30", u"10:30:",
                                         u"10:30:15:1", u"31/12/2020 10:30 x", u"31/12/2020 10:30:",
                                         u"31 10:30", u"12345:30", u"10:30 31/12/2020"));

TEST(ParseDateTest, FollowsTheLocalesOrder) {
    const LocaleGuard guard;
    SessionLocale().dateOrder = DateOrder::MonthDayYear;
    EXPECT_EQ(ParseDate(u"02/03/2024"), DateOf(2024, 2, 3));
    EXPECT_EQ(ParseDate(u"31/12/2024"), DateOf(2024, 12, 31));
    SessionLocale().dateOrder = DateOrder::YearMonthDay;
    EXPECT_EQ(ParseDate(u"24/03/05"), DateOf(2024, 3, 5));
    EXPECT_EQ(ParseDate(u"02/03/2024"), DateOf(2024, 2, 3));
}

TEST(ParseDateTest, TheTextOfADateIsReadBack) {
    for (const Date date : {DateOf(2024, 2, 29), DateOf(1999, 12, 31, 23, 59, 59),
                            DateOf(1850, 6, 15, 12, 0, 0), DateOf(100, 1, 1), Date{0.25}, Date{0}}) {
        EXPECT_EQ(ParseDate(CStr(date)), date) << ToUtf8(CStr(date));
    }
}

}  // namespace
}  // namespace quardele::basic
