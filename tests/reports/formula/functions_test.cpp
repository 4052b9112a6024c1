// The functions of report formulas.
#include <basic/date.h>

#include "formula_values.h"

namespace quardele::formula {
namespace {

using test::Evaluated;
using test::Shown;

TEST(Functions, OfTexts) {
    EXPECT_EQ(Shown(u"Left('AB-123-CD', 2) & '|' & Right('AB-123-CD', 2)"), "AB|CD");
    EXPECT_EQ(Shown(u"Mid('AB-123-CD', 4, 3) & Mid('AB-123-CD', 7)"), "123-CD");
    EXPECT_EQ(Shown(u"'[' & Trim('  a ') & ']' & '[' & LTrim(' a ') & ']' & '[' & TrimRight(' a ') & ']'"),
              "[a][a ][ a]");
    EXPECT_EQ(Shown(u"UCase('été') & LowerCase('ÉTÉ')"), "ÉTÉété");
    EXPECT_EQ(Shown(u"Len('été')"), "3");
    EXPECT_EQ(Shown(u"InStr('Renault', 'NAU')"), "3");
    EXPECT_EQ(Shown(u"Replace('a-b-c', '-', ' ')"), "a b c");
    EXPECT_EQ(Shown(u"ReplicateString('=-', 3) & '|' & Space(2) & '|'"), "=-=-=-|  |");
    EXPECT_EQ(Shown(u"'a' & Chr(10) & 'b'"), "a\nb");
}

TEST(Functions, OfConversion) {
    EXPECT_EQ(Shown(u"ToText(1234.5, '#,##0.00')"), "1\u00A0234,50");
    EXPECT_EQ(Shown(u"ToText(#12/31/2026#, 'dddd d mmmm yyyy')"), "jeudi 31 décembre 2026");
    EXPECT_EQ(Shown(u"CStr(1.5)"), "1,5");
    EXPECT_EQ(Shown(u"ToNumber('1,5') + Val('2.5 km')"), "4");
    EXPECT_EQ(Shown(u"ToNumber('x')"), "error 13");
    EXPECT_EQ(Shown(u"CDate('31/12/2026') = #12/31/2026#"), "Vrai");
    EXPECT_EQ(Shown(u"IsNumeric('12,5') and not IsNumeric('douze')"), "Vrai");
    EXPECT_EQ(Shown(u"IsDate('31/12/2026') and not IsDate('31/13/2026')"), "Vrai");
}

TEST(Functions, OfNumbers) {
    EXPECT_EQ(Shown(u"Abs(-2) & Int(-1.5) & Truncate(-1.5) & Sgn(-9)"), "2-2-1-1");
    EXPECT_EQ(Shown(u"Round(2.5) & '|' & Round(2.345, 2) & '|' & Round(1234, -2)"), "3|2,35|1200");
    EXPECT_EQ(Shown(u"Remainder(7, 3)"), "1");
    EXPECT_EQ(Shown(u"Remainder(7, 0)"), "error 11");
    EXPECT_EQ(Shown(u"Round(1, 99)"), "error 5");
}

TEST(Functions, OfDates) {
    EXPECT_EQ(Shown(u"Year(#12/31/2026#) & '-' & Month(#12/31/2026#) & '-' & Day(#12/31/2026#)"),
              "2026-12-31");
    EXPECT_EQ(Shown(u"Hour(#1/1/2026 08:30:05#) & Minute(#1/1/2026 08:30:05#) & Second(#1/1/2026 08:30:05#)"),
              "8305");
    EXPECT_EQ(Shown(u"DateAdd('m', 6, #8/31/2026#)"), "28/02/2027");
    EXPECT_EQ(Shown(u"Date(2026, 11, 21)"), "21/11/2026");
    EXPECT_EQ(Shown(u"Date(2026, 2, 30)"), "error 5");
    EXPECT_EQ(Evaluated(u"CurrentDate"), Variant(basic::Today()));
    EXPECT_EQ(Evaluated(u"Today()"), Variant(basic::Today()));
}

TEST(Functions, TheWeekBeginsOnSunday) {
    EXPECT_EQ(Shown(u"WeekDay(#11/22/2026#)"), "1");
    EXPECT_EQ(Shown(u"WeekDay(#11/21/2026#)"), "7");
    EXPECT_EQ(Shown(u"WeekDay(#12/30/1899#)"), "7");
    EXPECT_EQ(Shown(u"WeekDay(#1/1/1800#)"), "4");
}

TEST(Functions, HaveNoCase) {
    EXPECT_EQ(Shown(u"uppercase('a') & LEN('ab')"), "A2");
}

TEST(Functions, RefuseWhatWouldFillTheMemory) {
    EXPECT_EQ(Shown(u"ReplicateString('ab', 2000000000)"), "error 6");
    EXPECT_EQ(Shown(u"Space(2000000000)"), "error 6");
    EXPECT_EQ(Shown(u"Space(-1)"), "error 5");
    EXPECT_EQ(Shown(u"Replace(Space(1000000), ' ', '0123456789')"), "error 6");
    EXPECT_EQ(Shown(u"Len(Space(1000000) & Space(1000000))"), "error 6");
    EXPECT_EQ(Shown(u"Len(Space(1000000) + Space(1000000))"), "error 6");
    EXPECT_EQ(Shown(u"Len(Space(1000000) & Space(1000))"), "1001000");
}

TEST(Functions, RefuseArgumentsOfTheWrongKind) {
    EXPECT_EQ(Shown(u"Left(12, 1)"), "error 13");
    EXPECT_EQ(Shown(u"Left('a', 'b')"), "error 13");
    EXPECT_EQ(Shown(u"Left('a', -1)"), "error 5");
    EXPECT_EQ(Shown(u"Year('2026')"), "error 13");
    EXPECT_EQ(Shown(u"Mid('a', 0)"), "error 5");
    EXPECT_EQ(Shown(u"Left('a', 99999999999)"), "error 6");
    EXPECT_EQ(Shown(u"Chr(0)"), "error 5");
}

}  // namespace
}  // namespace quardele::formula
