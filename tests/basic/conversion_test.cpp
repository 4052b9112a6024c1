#include <basic/conversion.h>

#include <cmath>
#include <limits>

#include "support.h"

namespace quardele::basic {
namespace {

constexpr Guid kGuid = {
    {0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}};

struct NumberCase {
    const char16_t* text;
    double value;
};

class NumberInTextTest : public testing::TestWithParam<NumberCase> {};

TEST_P(NumberInTextTest, IsRead) {
    EXPECT_EQ(CDbl(GetParam().text), GetParam().value);
    EXPECT_TRUE(IsNumeric(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NumberInTextTest,
    testing::Values(NumberCase{u"0", 0}, NumberCase{u"1,5", 1.5}, NumberCase{u"-1,5", -1.5},
                    NumberCase{u"+3", 3}, NumberCase{u"  12  ", 12}, NumberCase{u"\t7\r\n", 7},
                    NumberCase{u",5", 0.5}, NumberCase{u"5,", 5}, NumberCase{u"1e3", 1000},
                    NumberCase{u"1E-2", 0.01}, NumberCase{u"2d2", 200}, NumberCase{u"1,5E+1", 15},
                    NumberCase{u"007", 7}, NumberCase{u"1e-400", 0}, NumberCase{u"0e99999", 0},
                    NumberCase{u"123456789012345678", 123456789012345678.0}));

class NoNumberInTextTest : public testing::TestWithParam<const char16_t*> {};

TEST_P(NoNumberInTextTest, IsATypeMismatch) {
    const Variant value(GetParam());
    EXPECT_EQ(ErrorOf([&] { (void)CDbl(value); }), 13);
    EXPECT_EQ(ErrorOf([&] { (void)CInt(value); }), 13);
    EXPECT_EQ(ErrorOf([&] { (void)CLng(value); }), 13);
    EXPECT_EQ(ErrorOf([&] { (void)CCur(value); }), 13);
    EXPECT_EQ(ErrorOf([&] { (void)CBool(value); }), 13);
    EXPECT_FALSE(IsNumeric(value));
}

INSTANTIATE_TEST_SUITE_P(Texts, NoNumberInTextTest,
                         testing::Values(u"", u"   ", u"abc", u"12abc", u"1.5", u"1,5,5", u",", u"-", u"+",
                                         u"1e", u"1e+", u"e3", u"--1", u"1 2", u"- 1", u"31/12/2020",
                                         u"NULL"));

TEST(CDblTest, FollowsTheLocalesSeparator) {
    const LocaleGuard guard;
    SessionLocale().decimalSeparator = u'.';
    EXPECT_EQ(CDbl(u"1.5"), 1.5);
    EXPECT_FALSE(IsNumeric(u"1,5"));
}

TEST(CDblTest, TakesEveryKindOfNumber) {
    EXPECT_EQ(CDbl(Empty()), 0);
    EXPECT_EQ(CDbl(true), -1);
    EXPECT_EQ(CDbl(false), 0);
    EXPECT_EQ(CDbl(std::uint8_t{200}), 200);
    EXPECT_EQ(CDbl(std::int16_t{-5}), -5);
    EXPECT_EQ(CDbl(70000), 70000);
    EXPECT_EQ(CDbl(Currency{12500}), 1.25);
    EXPECT_EQ(CDbl(0.5F), 0.5);
    EXPECT_EQ(CDbl(Decimal{true, 1, {0, 0, 0, 15}}), -1.5);
    EXPECT_EQ(CDbl(Date{2.25}), 2.25);
}

TEST(CDblTest, NullIsInvalidAndBytesAreATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { (void)CDbl(Null()); }), 94);
    EXPECT_EQ(ErrorOf([] { (void)CDbl(Binary{1, 2}); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)CDbl(Guid{}); }), 13);
}

TEST(CDblTest, TooLargeATextOverflows) {
    EXPECT_EQ(ErrorOf([] { (void)CDbl(u"1e400"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CDbl(Variant(Text(400, u'9'))); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CDbl(u"1e99999999999999"); }), 6);
    EXPECT_FALSE(IsNumeric(u"1e400"));
}

struct RoundingCase {
    double value;
    std::int16_t rounded;
};

class CIntTest : public testing::TestWithParam<RoundingCase> {};

TEST_P(CIntTest, RoundsHalvesToEven) {
    EXPECT_EQ(CInt(GetParam().value), GetParam().rounded);
}

INSTANTIATE_TEST_SUITE_P(Values, CIntTest,
                         testing::Values(RoundingCase{0.5, 0}, RoundingCase{1.5, 2}, RoundingCase{2.5, 2},
                                         RoundingCase{3.5, 4}, RoundingCase{-0.5, 0}, RoundingCase{-1.5, -2},
                                         RoundingCase{-2.5, -2}, RoundingCase{0.49999999999999994, 0},
                                         RoundingCase{2.5000001, 3}, RoundingCase{1.4, 1},
                                         RoundingCase{1.6, 2}, RoundingCase{32767.4, 32767},
                                         RoundingCase{-32768.5, -32768}));

TEST(CIntTest, OverflowsOutsideSixteenBits) {
    EXPECT_EQ(ErrorOf([] { (void)CInt(32767.5); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CInt(32768); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CInt(-32768.6); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CInt(u"40000"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CInt(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

TEST(CIntTest, ReadsTexts) {
    EXPECT_EQ(CInt(u" 12,5 "), 12);
    EXPECT_EQ(CInt(u"13,5"), 14);
}

TEST(CLngTest, RoundsAndOverflowsAtThirtyTwoBits) {
    EXPECT_EQ(CLng(40000.5), 40000);
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_EQ(CLng(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ErrorOf([] { (void)CLng(2147483647.5); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CLng(1e300); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CLng(Null()); }), 94);
}

TEST(CBoolTest, WordsAndNumbersAreTruthValues) {
    for (const char16_t* text : {u"True", u"VRAI", u"vrai", u" Vrai ", u"1", u"-1", u"0,5"}) {
        EXPECT_TRUE(CBool(text)) << ToUtf8(text);
    }
    for (const char16_t* text : {u"False", u"faux", u"FAUX", u"0", u"0,0"}) {
        EXPECT_FALSE(CBool(text)) << ToUtf8(text);
    }
    EXPECT_TRUE(CBool(2));
    EXPECT_FALSE(CBool(Empty()));
    EXPECT_EQ(ErrorOf([] { (void)CBool(u"oui"); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)CBool(Null()); }), 94);
}

TEST(CCurTest, KeepsFourDecimalsExactly) {
    EXPECT_EQ(CCur(u"1,23456"), (Currency{12346}));
    EXPECT_EQ(CCur(u"1,23445"), (Currency{12344}));
    EXPECT_EQ(CCur(u"1,23455"), (Currency{12346}));
    EXPECT_EQ(CCur(u"1,234450001"), (Currency{12345}));
    EXPECT_EQ(CCur(u"-0,00005"), (Currency{0}));
    EXPECT_EQ(CCur(u"0,00006"), (Currency{1}));
    EXPECT_EQ(CCur(u"0,000001"), (Currency{0}));
    EXPECT_EQ(CCur(u"15e-1"), (Currency{15000}));
    EXPECT_EQ(CCur(u"2e3"), (Currency{20000000}));
    EXPECT_EQ(CCur(u"922337203685477,5807"), (Currency{std::numeric_limits<std::int64_t>::max()}));
    EXPECT_EQ(CCur(u"-922337203685477,5808"), (Currency{std::numeric_limits<std::int64_t>::min()}));
    EXPECT_EQ(CCur(1.5), (Currency{15000}));
    EXPECT_EQ(CCur(Currency{std::numeric_limits<std::int64_t>::min()}),
              (Currency{std::numeric_limits<std::int64_t>::min()}));
}

TEST(CCurTest, OverflowsOutsideItsRange) {
    EXPECT_EQ(ErrorOf([] { (void)CCur(u"922337203685477,5808"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CCur(u"922337203685477,58075"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CCur(u"-922337203685477,58086"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CCur(u"1844674407370955,16155"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CCur(u"1e99999"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CCur(1e15); }), 6);
}

TEST(CStrTest, NumbersHaveNoPadding) {
    EXPECT_EQ(CStr(std::uint8_t{5}), u"5");
    EXPECT_EQ(CStr(std::int16_t{-12}), u"-12");
    EXPECT_EQ(CStr(2147483647), u"2147483647");
    EXPECT_EQ(CStr(1.5), u"1,5");
    EXPECT_EQ(CStr(0.1F), u"0,1");
    EXPECT_EQ(CStr(Currency{12500}), u"1,25");
    EXPECT_EQ(CStr(Decimal{false, 1, {0, 0, 0, 15}}), u"1,5");
}

TEST(CStrTest, DatesAreTheShortDateWithTheTimeThatThereIs) {
    EXPECT_EQ(CStr(DateOf(2020, 12, 31)), u"31/12/2020");
    EXPECT_EQ(CStr(DateOf(2020, 12, 31, 8, 5, 0)), u"31/12/2020 08:05:00");
    EXPECT_EQ(CStr(DateOf(1850, 1, 2, 23, 59, 59)), u"02/01/1850 23:59:59");
}

TEST(CStrTest, ATimeWithoutADayIsTheTimeOnly) {
    EXPECT_EQ(CStr(Date{0.5}), u"12:00:00");
    EXPECT_EQ(CStr(Date{0}), u"00:00:00");
}

TEST(CStrTest, DatesFollowTheLocale) {
    const LocaleGuard guard;
    SessionLocale().dateSeparator = u'.';
    SessionLocale().shortDate = u"yyyy/mm/dd";
    EXPECT_EQ(CStr(DateOf(2020, 12, 31)), u"2020.12.31");
}

TEST(CStrTest, OtherValues) {
    EXPECT_EQ(CStr(Empty()), u"");
    EXPECT_EQ(CStr(true), u"Vrai");
    EXPECT_EQ(CStr(false), u"Faux");
    EXPECT_EQ(CStr(u" x "), u" x ");
    EXPECT_EQ(CStr(kGuid), u"{00112233-4455-6677-8899-AABBCCDDEEFF}");
    EXPECT_EQ(ErrorOf([] { (void)CStr(Null()); }), 94);
    EXPECT_EQ(ErrorOf([] { (void)CStr(Binary{1}); }), 13);
}

TEST(JoinedTest, NullIsTheEmptyText) {
    EXPECT_EQ(Joined(Null()), u"");
    EXPECT_EQ(Joined(12), u"12");
    EXPECT_EQ(ErrorOf([] { (void)Joined(Binary{1}); }), 13);
}

TEST(CDateTest, NumbersAreDays) {
    EXPECT_EQ(CDate(1), (Date{1}));
    EXPECT_EQ(CDate(2.5), (Date{2.5}));
    EXPECT_EQ(CDate(Empty()), (Date{0}));
    EXPECT_EQ(CDate(Date{-3.25}), (Date{-3.25}));
}

TEST(CDateTest, TextsAreReadAndRefused) {
    EXPECT_EQ(CDate(u"01/01/2100"), DateOf(2100, 1, 1));
    EXPECT_EQ(ErrorOf([] { (void)CDate(u"29/02/2023"); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)CDate(u""); }), 13);
    EXPECT_EQ(ErrorOf([] { (void)CDate(Null()); }), 94);
}

TEST(CDateTest, DaysOutsideTheCalendarOverflow) {
    EXPECT_EQ(CStr(CDate(-657434)), u"01/01/0100");
    EXPECT_EQ(CStr(CDate(2958465)), u"31/12/9999");
    EXPECT_EQ(ErrorOf([] { (void)CDate(-657435); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CDate(2958466); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)CDate(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

class ValTest : public testing::TestWithParam<NumberCase> {};

TEST_P(ValTest, StopsWhereTheNumberStops) {
    EXPECT_EQ(Val(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Texts, ValTest,
                         testing::Values(NumberCase{u"12abc", 12}, NumberCase{u"abc", 0}, NumberCase{u"", 0},
                                         NumberCase{u"1,5", 1}, NumberCase{u"1.5", 1.5},
                                         NumberCase{u".5x", 0.5}, NumberCase{u"  1 6 15 rue", 1615},
                                         NumberCase{u"-3 mois", -3}, NumberCase{u"1e3", 1000},
                                         NumberCase{u"1e", 1}, NumberCase{u"12 mois", 12},
                                         NumberCase{u"&H1F", 31}, NumberCase{u"&h1g", 1},
                                         NumberCase{u"& O 17", 15}, NumberCase{u"&HFFFF", -1},
                                         NumberCase{u"&HFFFF&", 65535}, NumberCase{u"&HFFFFFFFF", -1},
                                         NumberCase{u"&H", 0}, NumberCase{u"&", 0}, NumberCase{u"+7", 7},
                                         NumberCase{u"-", 0}, NumberCase{u"1.2.3", 1.2}));

TEST(ValTest, UsesThePointInAnyLocale) {
    const LocaleGuard guard;
    SessionLocale().decimalSeparator = u';';
    EXPECT_EQ(Val(u"1.5"), 1.5);
}

TEST(ValTest, TooLargeANumberOverflows) {
    EXPECT_EQ(ErrorOf([] { (void)Val(u"1e400"); }), 6);
    EXPECT_EQ(ErrorOf([] { (void)Val(u"&H123456789"); }), 6);
}

TEST(IsNumericTest, LooksAtTheType) {
    EXPECT_TRUE(IsNumeric(Empty()));
    EXPECT_TRUE(IsNumeric(true));
    EXPECT_TRUE(IsNumeric(Currency{1}));
    EXPECT_FALSE(IsNumeric(Null()));
    EXPECT_FALSE(IsNumeric(Date{1}));
    EXPECT_FALSE(IsNumeric(Binary{1}));
}

TEST(IsDateTest, DatesAndTextsThatReadAsOne) {
    EXPECT_TRUE(IsDate(Date{1}));
    EXPECT_TRUE(IsDate(u"31/12/2020"));
    EXPECT_FALSE(IsDate(u"12"));
    EXPECT_FALSE(IsDate(12));
    EXPECT_FALSE(IsDate(Null()));
    EXPECT_FALSE(IsDate(Empty()));
}

TEST(NumberOfTest, DoesNotReadTexts) {
    EXPECT_EQ(NumberOf(true), -1);
    EXPECT_EQ(NumberOf(Date{2.5}), 2.5);
    EXPECT_FALSE(NumberOf(u"1"));
    EXPECT_FALSE(NumberOf(Empty()));
    EXPECT_FALSE(NumberOf(Null()));
    EXPECT_FALSE(NumberOf(Binary{1}));
}

}  // namespace
}  // namespace quardele::basic
