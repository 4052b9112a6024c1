#include "number_text.h"

#include <limits>

#include <basic/conversion.h>

#include "support.h"

namespace quardele::basic {
namespace {

struct Case {
    double value;
    const char16_t* text;
};

class NumberTextTest : public testing::TestWithParam<Case> {};

TEST_P(NumberTextTest, WritesAtMostFifteenDigitsWithTheLocalesSeparator) {
    EXPECT_EQ(NumberText(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Plain, NumberTextTest,
    testing::Values(Case{0, u"0"}, Case{-0.0, u"0"}, Case{1, u"1"}, Case{-1, u"-1"}, Case{1.5, u"1,5"},
                    Case{-2.25, u"-2,25"}, Case{100, u"100"}, Case{0.1, u"0,1"}, Case{0.1 + 0.2, u"0,3"},
                    Case{0.05, u"0,05"}, Case{1.0 / 3, u"0,333333333333333"},
                    Case{2.0 / 3, u"0,666666666666667"}, Case{100.0 / 3, u"33,3333333333333"},
                    Case{1e-5, u"0,00001"}, Case{1e-15, u"0,000000000000001"},
                    Case{123456789012345, u"123456789012345"}, Case{999999999999999, u"999999999999999"},
                    Case{99999999999999.96, u"100000000000000"}));

INSTANTIATE_TEST_SUITE_P(Exponent, NumberTextTest,
                         testing::Values(Case{1e15, u"1E+15"}, Case{-1e15, u"-1E+15"},
                                         Case{1234567890123456, u"1,23456789012346E+15"},
                                         Case{1e100, u"1E+100"}, Case{1.0 / 30, u"3,33333333333333E-02"},
                                         Case{1e-16, u"1E-16"}, Case{-1.5e-20, u"-1,5E-20"},
                                         Case{std::numeric_limits<double>::max(), u"1,79769313486232E+308"}));

TEST(NumberTextTest, FollowsTheLocale) {
    const LocaleGuard guard;
    SessionLocale().decimalSeparator = u'.';
    EXPECT_EQ(NumberText(1.5), u"1.5");
}

TEST(NumberTextTest, WhatIsNoNumberIsSaidSo) {
    EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), u"1,#INF");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::infinity()), u"-1,#INF");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::quiet_NaN()), u"-1,#IND");
}

TEST(SingleTextTest, WritesSevenDigits) {
    EXPECT_EQ(SingleText(0.1F), u"0,1");
    EXPECT_EQ(SingleText(1.0F / 3), u"0,3333333");
    EXPECT_EQ(SingleText(1234567.0F), u"1234567");
    EXPECT_EQ(SingleText(1e7F), u"1E+07");
}

TEST(CurrencyTextTest, WritesTheDecimalsThatThereAre) {
    EXPECT_EQ(CurrencyText({0}), u"0");
    EXPECT_EQ(CurrencyText({10000}), u"1");
    EXPECT_EQ(CurrencyText({12500}), u"1,25");
    EXPECT_EQ(CurrencyText({-1}), u"-0,0001");
    EXPECT_EQ(CurrencyText({std::numeric_limits<std::int64_t>::max()}), u"922337203685477,5807");
    EXPECT_EQ(CurrencyText({std::numeric_limits<std::int64_t>::min()}), u"-922337203685477,5808");
}

TEST(DecimalTextTest, PlacesThePointByTheScale) {
    EXPECT_EQ(DecimalText({false, 2, {0, 0, 0, 12345}}), u"123,45");
    EXPECT_EQ(DecimalText({true, 5, {0, 0, 0, 12345}}), u"-0,12345");
    EXPECT_EQ(DecimalText({false, 2, {0, 0, 0, 12300}}), u"123");
    EXPECT_EQ(DecimalText({true, 3, {0, 0, 0, 0}}), u"0");
    EXPECT_EQ(DecimalText({false, 0, {0, 1, 0, 0}}), u"18446744073709551616");
}

TEST(DecimalTextTest, TheWholeMagnitudeCounts) {
    constexpr std::uint32_t kAll = 0xFFFFFFFF;
    EXPECT_EQ(DecimalText({false, 0, {kAll, kAll, kAll, kAll}}), u"340282366920938463463374607431768211455");
}

TEST(DecimalValueTest, GivesTheNearestDouble) {
    EXPECT_EQ(DecimalValue({false, 2, {0, 0, 0, 12345}}), 123.45);
    EXPECT_EQ(DecimalValue({true, 1, {0, 0, 0, 5}}), -0.5);
    EXPECT_EQ(DecimalValue({false, 0, {0, 1, 0, 0}}), 18446744073709551616.0);
    EXPECT_EQ(DecimalValue({}), 0);
}

}  // namespace
}  // namespace quardele::basic
