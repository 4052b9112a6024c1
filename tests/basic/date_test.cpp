#include <basic/date.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

#include <basic/conversion.h>

#include "support.h"

namespace quardele::basic {
namespace {

constexpr double kSecond = 1.0 / 86400;

TEST(DateOfTest, CountsDaysFromTheThirtiethOfDecember1899) {
    EXPECT_EQ(DateOf(1899, 12, 30).days, 0);
    EXPECT_EQ(DateOf(1900, 1, 1).days, 2);
    EXPECT_EQ(DateOf(1899, 12, 29).days, -1);
    EXPECT_EQ(DateOf(2000, 1, 1).days, 36526);
    EXPECT_EQ(DateOf(100, 1, 1).days, -657434);
    EXPECT_EQ(DateOf(9999, 12, 31).days, 2958465);
}

TEST(DateOfTest, TheTimeCountsForwardBeforeDayZeroToo) {
    EXPECT_EQ(DateOf(1899, 12, 29, 6, 0, 0).days, -1.25);
    EXPECT_EQ(DateOf(1899, 12, 31, 6, 0, 0).days, 1.25);
    EXPECT_EQ(DateOf(1899, 12, 30, 6, 0, 0).days, 0.25);
}

TEST(DateOfTest, WhatDoesNotExistFails) {
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 2, 29); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(99, 1, 1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(10000, 1, 1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 0, 1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 13, 1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 1, 1, 24, 0, 0); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 1, 1, 0, 60, 0); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)DateOf(2023, 1, 1, 0, 0, -1); }), 5);
}

TEST(CivilOfTest, EveryDayComesBack) {
    Date day = DateOf(100, 1, 1);
    CivilDate before = CivilOf(day);
    for (; day.days < DateOf(9999, 12, 31).days; day.days += 1) {
        const CivilDate civil = CivilOf({day.days + 1});
        ASSERT_LT(before, civil);
        ASSERT_EQ(DateOf(civil.year, civil.month, civil.day).days, day.days + 1);
        before = civil;
    }
}

TEST(CivilOfTest, NegativeDaysWithATimeBelongToTheirOwnDay) {
    EXPECT_EQ(CivilOf({-1.25}), (CivilDate{1899, 12, 29}));
    EXPECT_EQ(TimeOf({-1.25}).hour, 6);
    EXPECT_EQ(CivilOf({-0.25}), (CivilDate{1899, 12, 30}));
    EXPECT_EQ(TimeOf({-0.25}).hour, 6);
}

TEST(CivilOfTest, ATimeThatRoundsToMidnightIsTheNextDay) {
    const Date almost{DateOf(2020, 12, 31).days + 1 - kSecond / 4};
    EXPECT_EQ(CivilOf(almost), (CivilDate{2021, 1, 1}));
    EXPECT_EQ(TimeOf(almost).hour, 0);
    EXPECT_EQ(CStr(almost), u"01/01/2021");
    const Date beforeZero{-2 - (1 - kSecond / 4)};
    EXPECT_EQ(CivilOf(beforeZero), (CivilDate{1899, 12, 29}));
}

TEST(CivilOfTest, DatesOutsideTheCalendarOverflow) {
    for (const double days : {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([days] { (void)CivilOf({days}); }), 6) << days;
        EXPECT_EQ(ErrorOf([days] { (void)TimeOf({days}); }), 6) << days;
        EXPECT_EQ(ErrorOf([days] { (void)DateAdd(u"d", 1, {days}); }), 6) << days;
        EXPECT_EQ(ErrorOf([days] { (void)Format(Date{days}, u"dd"); }), 6) << days;
    }
}

TEST(TimeOfTest, IsInWholeSeconds) {
    const TimeOfDay time = TimeOf({1 + 0.4 * kSecond + (13 * 3600 + 45 * 60 + 30) * kSecond});
    EXPECT_EQ(time.hour, 13);
    EXPECT_EQ(time.minute, 45);
    EXPECT_EQ(time.second, 30);
}

TEST(TimeOfTest, EverySecondOfADayComesBack) {
    for (int second = 0; second < 86400; ++second) {
        const Date date = DateOf(2024, 7, 1, second / 3600, second / 60 % 60, second % 60);
        const TimeOfDay time = TimeOf(date);
        ASSERT_EQ((time.hour * 60 + time.minute) * 60 + time.second, second);
        ASSERT_EQ(CivilOf(date), (CivilDate{2024, 7, 1}));
    }
}

TEST(DaysInMonthTest, KnowsLeapYears) {
    EXPECT_EQ(DaysInMonth(2024, 2), 29);
    EXPECT_EQ(DaysInMonth(2023, 2), 28);
    EXPECT_EQ(DaysInMonth(1900, 2), 28);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2023, 4), 30);
    EXPECT_EQ(DaysInMonth(2023, 12), 31);
    EXPECT_EQ(ErrorOf([] { (void)DaysInMonth(2023, 13); }), 5);
}

struct AddCase {
    const char16_t* interval;
    double number;
    Date start;
    Date result;
};

class DateAddTest : public testing::TestWithParam<AddCase> {};

TEST_P(DateAddTest, AddsUnits) {
    const auto [interval, number, start, result] = GetParam();
    EXPECT_EQ(CStr(DateAdd(interval, number, start)), CStr(result)) << ToUtf8(interval) << " " << number;
}

INSTANTIATE_TEST_SUITE_P(
    Months, DateAddTest,
    testing::Values(AddCase{u"m", 1, DateOf(2023, 1, 31), DateOf(2023, 2, 28)},
                    AddCase{u"m", 1, DateOf(2024, 1, 31), DateOf(2024, 2, 29)},
                    AddCase{u"m", 1, DateOf(2024, 2, 29), DateOf(2024, 3, 29)},
                    AddCase{u"m", 12, DateOf(2024, 2, 29), DateOf(2025, 2, 28)},
                    AddCase{u"m", 48, DateOf(2024, 2, 29), DateOf(2028, 2, 29)},
                    AddCase{u"m", -1, DateOf(2024, 3, 31), DateOf(2024, 2, 29)},
                    AddCase{u"m", -1, DateOf(2024, 1, 15), DateOf(2023, 12, 15)},
                    AddCase{u"m", -13, DateOf(2024, 1, 15), DateOf(2022, 12, 15)},
                    AddCase{u"m", 0, DateOf(2024, 1, 31), DateOf(2024, 1, 31)},
                    AddCase{u"M", 6, DateOf(2024, 8, 31), DateOf(2025, 2, 28)},
                    AddCase{u"m", 1, DateOf(2023, 1, 31, 10, 30, 15), DateOf(2023, 2, 28, 10, 30, 15)},
                    AddCase{u"m", 1, DateOf(1899, 12, 15, 18, 0, 0), DateOf(1900, 1, 15, 18, 0, 0)},
                    AddCase{u"m", -1, DateOf(1900, 1, 15, 18, 0, 0), DateOf(1899, 12, 15, 18, 0, 0)},
                    AddCase{u"q", 1, DateOf(2023, 11, 30), DateOf(2024, 2, 29)},
                    AddCase{u"yyyy", 1, DateOf(2024, 2, 29), DateOf(2025, 2, 28)},
                    AddCase{u"YYYY", -100, DateOf(2000, 2, 29), DateOf(1900, 2, 28)}));

INSTANTIATE_TEST_SUITE_P(
    DaysAndSeconds, DateAddTest,
    testing::Values(AddCase{u"d", 1, DateOf(2023, 12, 31), DateOf(2024, 1, 1)},
                    AddCase{u"y", -1, DateOf(2024, 3, 1), DateOf(2024, 2, 29)},
                    AddCase{u"w", 2, DateOf(2024, 3, 1), DateOf(2024, 3, 3)},
                    AddCase{u"ww", 2, DateOf(2024, 3, 1), DateOf(2024, 3, 15)},
                    AddCase{u"d", -1, DateOf(1899, 12, 30, 6, 0, 0), DateOf(1899, 12, 29, 6, 0, 0)},
                    AddCase{u"h", 25, DateOf(2024, 2, 28, 23, 30, 0), DateOf(2024, 3, 1, 0, 30, 0)},
                    AddCase{u"n", -1, DateOf(2024, 1, 1), DateOf(2023, 12, 31, 23, 59, 0)},
                    AddCase{u"s", 86400, DateOf(2024, 1, 1), DateOf(2024, 1, 2)},
                    AddCase{u"h", -7, DateOf(1899, 12, 30, 6, 0, 0), DateOf(1899, 12, 29, 23, 0, 0)}));

INSTANTIATE_TEST_SUITE_P(TheNumberIsRoundedHalvesToEven, DateAddTest,
                         testing::Values(AddCase{u"m", 2.5, DateOf(2024, 1, 1), DateOf(2024, 3, 1)},
                                         AddCase{u"m", 3.5, DateOf(2024, 1, 1), DateOf(2024, 5, 1)},
                                         AddCase{u"d", 1.6, DateOf(2024, 1, 1), DateOf(2024, 1, 3)}));

/// Months later, counted on the calendar.
Date MonthsLater(Date start, int months) {
    const CivilDate day = CivilOf(start);
    const int total = day.year * 12 + day.month - 1 + months;
    const int year = total / 12;
    const int month = total % 12 + 1;
    return DateOf(year, month, std::min(day.day, DaysInMonth(year, month)));
}

TEST(DateAddTest, AnyDayIsMovedByMonthsAsTheCalendarSays) {
    for (Date day = DateOf(1970, 1, 1); day.days < DateOf(2090, 1, 1).days; ++day.days) {
        for (const int months : {-1300, -120, -13, -1, 0, 1, 6, 11, 12, 60, 1200, 1300}) {
            ASSERT_EQ(DateAdd(u"m", months, day).days, MonthsLater(day, months).days)
                << day.days << " " << months;
        }
    }
}

TEST(DateAddTest, UnknownIntervalOrResultOutsideTheCalendarFails) {
    const Date date = DateOf(2024, 1, 1);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"x", 1, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"", 1, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"m", 12 * 8000, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"m", -12 * 2000, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"d", 3e6, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"ww", 1e300, date); }), 5);
    EXPECT_EQ(ErrorOf([&] { (void)DateAdd(u"s", std::numeric_limits<double>::quiet_NaN(), date); }), 5);
}

TEST(ClockTest, TodayIsTheDayOfNow) {
    const Date before = Today();
    const Date now = Now();
    const Date after = Today();
    EXPECT_EQ(before.days, std::floor(before.days));
    EXPECT_GE(now.days, before.days);
    EXPECT_LT(now.days, after.days + 1);
}

TEST(ClockTest, NowIsTheWorkstationsTime) {
    const std::time_t clock = std::time(nullptr);
    const std::tm local = *std::localtime(&clock);
    const Date expected = DateOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                 local.tm_min, local.tm_sec);
    EXPECT_NEAR(Now().days, expected.days, 10 * kSecond);
}

}  // namespace
}  // namespace quardele::basic
