// Each function, by what calls come to.
#include <basic/date.h>

#include "expressions/functions.h"
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

struct Case {
    const char* call;
    const char* value;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.call;
}

class FunctionTest : public testing::TestWithParam<Case> {};

TEST_P(FunctionTest, ComesToItsValue) {
    EXPECT_EQ(Eval(GetParam().call), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Choices, FunctionTest,
    testing::Values(Case{"IIf(1 > 2, 'a', 'b')", "'b'"}, Case{"IIf(Null, 'a', 'b')", "'b'"},
                    Case{"iif(isnull(Null), 1, 2)", "1"}, Case{"IsNull('')", "False"}, Case{"Nz(Null)", "''"},
                    Case{"Nz(Null, 5)", "5"}, Case{"Nz(3, 5)", "3"}, Case{"Switch(False, 1, True, 2)", "2"},
                    Case{"Switch(False, 1)", "Null"}, Case{"Choose(2, 'a', 'b')", "'b'"},
                    Case{"Choose(3, 'a', 'b')", "Null"}, Case{"Choose(1.9, 'a', 'b')", "'a'"}));

INSTANTIATE_TEST_SUITE_P(
    Texts, FunctionTest,
    testing::Values(Case{"Left('abc', 2)", "'ab'"}, Case{"Left('abc', 9)", "'abc'"},
                    Case{"Left(Null, 2)", "Null"}, Case{"Left(12345, 2)", "'12'"},
                    Case{"Right('abc', 2)", "'bc'"}, Case{"Mid('abcd', 2)", "'bcd'"},
                    Case{"Mid('abcd', 2, 2)", "'bc'"}, Case{"Mid('abcd', 9)", "''"}, Case{"Len('abc ')", "4"},
                    Case{"Len(Null)", "Null"}, Case{"Trim('  a b  ')", "'a b'"},
                    Case{"LTrim('  a ')", "'a '"}, Case{"RTrim(' a  ')", "' a'"},
                    Case{"Trim(Null & '')", "''"}, Case{"UCase('été')", "'ÉTÉ'"},
                    Case{"LCase('ÉTÉ')", "'été'"}, Case{"Space(3)", "'   '"},
                    Case{"String(3, 'xy')", "'xxx'"}, Case{"String(2, 65)", "'AA'"}, Case{"Chr(65)", "'A'"},
                    Case{"Asc('Abc')", "65"}, Case{"Left$('abc', 1)", "'a'"}, Case{"Asc('€')", "128"},
                    Case{"Asc('é')", "233"}, Case{"Asc('Ω')", "63"}, Case{"Chr(128)", "'€'"},
                    Case{"Chr(233)", "'é'"}, Case{"String(2, 128)", "'€€'"}, Case{"String(2, 321)", "'AA'"}));

INSTANTIATE_TEST_SUITE_P(
    Searches, FunctionTest,
    testing::Values(Case{"InStr('abcABC', 'c')", "3"}, Case{"InStr('abcABC', 'C')", "3"},
                    Case{"InStr(4, 'abcABC', 'c')", "6"}, Case{"InStr(1, 'abcABC', 'C', 0)", "6"},
                    Case{"InStr(1, 'abcABC', 'C', 1)", "3"}, Case{"InStr('abc', 'z')", "0"},
                    Case{"InStr('abc', '')", "1"}, Case{"InStr('', 'a')", "0"},
                    Case{"InStr(9, 'abc', 'a')", "0"}, Case{"InStr(Null, 'a')", "Null"},
                    Case{"Replace('aXbxc', 'x', '-')", "'a-b-c'"},
                    Case{"Replace('aXbxc', 'x', '-', 1, -1, 0)", "'aXb-c'"},
                    Case{"Replace('aaaa', 'a', 'b', 2, 2)", "'bba'"},
                    Case{"Replace('abc', '', '-')", "'abc'"}, Case{"StrComp('a', 'A')", "0"},
                    Case{"StrComp('a', 'A', 0)", "1"}, Case{"StrComp('a', 'b')", "-1"}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, FunctionTest,
    testing::Values(Case{"Abs(-3)", "3"}, Case{"Abs(2.5)", "2.5"}, Case{"Int(2.7)", "2"},
                    Case{"Int(-2.1)", "-3"}, Case{"Fix(-2.9)", "-2"}, Case{"Round(2.5)", "2"},
                    Case{"Round(3.5)", "4"}, Case{"Round(2.346, 2)", "2.35"}, Case{"Sgn(-9)", "-1"},
                    Case{"Sgn(0)", "0"}, Case{"Sqr(9)", "3"}, Case{"Val('12abc')", "12"},
                    Case{"Val('1.5')", "1.5"}, Case{"Val('abc')", "0"}, Case{"CInt(2.5)", "2"},
                    Case{"CInt('12')", "12"}, Case{"CLng(3.5)", "4"}, Case{"CDbl('1,5')", "1.5"},
                    Case{"CBool(5)", "True"}, Case{"CBool('Faux')", "False"}, Case{"CStr(1.5)", "'1,5'"},
                    Case{"CCur(1.5)", "1.5 EUR"}, Case{"CCur(1.5) + 1", "2.5 EUR"}, Case{"CByte(200)", "200"},
                    Case{"CSng(0.5)", "0.5"}, Case{"Val('&H1F')", "31"}, Case{"Val('&O17')", "15"},
                    Case{"Fix(-0.5)", "0"}, Case{"Round(-0.4)", "0"}, Case{"Round(-0.001, 2)", "0"},
                    Case{"CDbl('-0')", "0"}, Case{"-1 * 0.0", "0"}, Case{"IsNumeric('1,5')", "True"},
                    Case{"IsNumeric('abc')", "False"}, Case{"IsNumeric(Null)", "False"}));

INSTANTIATE_TEST_SUITE_P(Dates, FunctionTest,
                         testing::Values(Case{"DateAdd('m', 1, #01/31/2024#)", "#02/29/2024#"},
                                         Case{"DateAdd(\"m\", 12, #02/29/2024#)", "#02/28/2025#"},
                                         Case{"DateAdd('yyyy', 1, #02/29/2024#)", "#02/28/2025#"},
                                         Case{"DateAdd('D', 1, #12/31/2026#)", "#01/01/2027#"},
                                         Case{"DateAdd('h', 25, #12/31/2026#)", "#01/01/2027 01:00:00#"},
                                         Case{"DateAdd('m', Null, #01/31/2024#)", "Null"},
                                         Case{"DateAdd('m', 1, Null)", "Null"},
                                         Case{"DateDiff('d', #12/25/2026#, #01/01/2027#)", "7"},
                                         Case{"DateDiff('m', #12/31/2026#, #01/01/2027#)", "1"},
                                         Case{"DateDiff('yyyy', #12/31/2026#, #01/01/2027#)", "1"},
                                         Case{"DateDiff('q', #01/01/2026#, #12/31/2026#)", "3"},
                                         Case{"DateDiff('w', #11/01/2026#, #11/20/2026#)", "2"},
                                         Case{"DateDiff('ww', #11/07/2026#, #11/08/2026#)", "1"},
                                         Case{"DateDiff('ww', #11/07/2026#, #11/08/2026#, 2)", "0"},
                                         Case{"DateDiff('h', #12/31/2026 10:59#, #12/31/2026 11:00#)", "1"},
                                         Case{"DateDiff('n', #12/31/2026 10:59#, #12/31/2026 11:00#)", "1"},
                                         Case{"DateDiff('s', #12/31/2026#, #01/01/2027#)", "86400"},
                                         Case{"DateDiff('d', #01/01/2027#, #12/25/2026#)", "-7"}));

INSTANTIATE_TEST_SUITE_P(
    DateParts, FunctionTest,
    testing::Values(
        Case{"DatePart('yyyy', #12/31/2026#)", "2026"}, Case{"DatePart('q', #12/31/2026#)", "4"},
        Case{"DatePart('y', #12/31/2024#)", "366"}, Case{"DatePart('w', #11/20/2026#)", "6"},
        Case{"DatePart('ww', #12/31/2026#)", "53"}, Case{"DatePart('ww', #01/01/2027#, 2, 2)", "53"},
        Case{"DatePart('ww', #12/29/2025#, 2, 2)", "1"}, Case{"DatePart('ww', #01/01/2027#, 2, 3)", "52"},
        Case{"DatePart('n', #12/31/2026 10:30#)", "30"}, Case{"Year(#12/31/2026#)", "2026"},
        Case{"Month('31/12/2026')", "12"}, Case{"Day(#12/31/2026#)", "31"},
        Case{"Weekday(#11/20/2026#)", "6"}, Case{"Weekday(#11/20/2026#, 2)", "5"},
        Case{"Weekday(#12/29/1899#)", "6"}, Case{"Weekday(#12/30/1899#)", "7"},
        Case{"Hour(#12/31/2026 10:30:15#)", "10"}, Case{"Minute(#12/31/2026 10:30:15#)", "30"},
        Case{"Second(#12/31/2026 10:30:15#)", "15"}, Case{"Year(Null)", "Null"},
        Case{"DateSerial(2026, 12, 31)", "#12/31/2026#"}, Case{"DateSerial(2026, 14, 1)", "#02/01/2027#"},
        Case{"DateSerial(2026, 3, 0)", "#02/28/2026#"}, Case{"DateSerial(26, 1, 1)", "#01/01/2026#"},
        Case{"TimeSerial(10, 30, 0)", "#12/30/1899 10:30:00#"},
        Case{"DateValue('31/12/2026 10:30')", "#12/31/2026#"},
        Case{"TimeValue('31/12/2026 10:30')", "#12/30/1899 10:30:00#"},
        Case{"CDate('45000')", "#03/15/2023#"}, Case{"CDate('45000,5')", "#03/15/2023 12:00:00#"},
        Case{"Year('45000')", "2023"}, Case{"IsDate('45000')", "False"},
        Case{"CDate('31/12/2026')", "#12/31/2026#"}, Case{"IsDate('31/12/2026')", "True"},
        Case{"IsDate('abc')", "False"}));

INSTANTIATE_TEST_SUITE_P(Formats, FunctionTest,
                         testing::Values(Case{"Format(#12/31/2026#, 'mm/dd/yyyy')", "'12/31/2026'"},
                                         Case{"Format(#12/31/2026#, 'yymmdd')", "'261231'"},
                                         Case{"Format('31/12/2026', 'dd/mm/yy')", "'31/12/26'"},
                                         Case{"Format(Null, 'dd/mm')", "''"}, Case{"Format(1.5)", "'1,5'"},
                                         Case{"Format(1234.5, '0.00')", "'1234,50'"},
                                         Case{"Format(1234.5, '#,##0.00')", "'1\u00A0234,50'"},
                                         Case{"Format(0.256, '0.0%')", "'25,6%'"},
                                         Case{"Format(7, '000')", "'007'"},
                                         Case{"Format(-0.5, '#.##')", "'-,5'"},
                                         Case{"Format(12, '0 km')", "'12 km'"}));

TEST(FunctionErrorTest, ArgumentsOutsideTheirRange) {
    for (const char* call :
         {"Left('abc', -1)", "Mid('abc', 0)", "Space(-1)", "Chr(-1)", "Chr(300)", "Asc('')", "Sqr(-1)",
          "String(2, '')", "DateAdd('x', 1, #1/1/2026#)", "DatePart('zz', #1/1/2026#)",
          "DateSerial(20000, 1, 1)", "Weekday(#1/1/2026#, 9)", "Format(#1/1/2026#, 'ww', 1, 4)",
          "Round(1.5, -1)", "InStr(0, 'a', 'a')", "Space(1000000000)"}) {
        EXPECT_EQ(ErrorOf([call] { static_cast<void>(Eval(call)); }), 5) << call;
    }
}

TEST(FunctionErrorTest, ConversionsThatFail) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("CDbl('abc')")); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("CDate('abc')")); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("CInt(40000)")); }), 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("CByte(-1)")); }), 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("CStr(Null)")); }), 94);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("DateDiff('s', #1/1/1900#, #1/1/2100#)")); }), 6);
}

TEST(FunctionErrorTest, UnknownFunctionsAndWrongNumbersOfArguments) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("Foo(1)")); }), 3085);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("Left('a')")); }), 3075);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("IIf(True)")); }), 3075);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("Switch(True)")); }), 3075);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("Date(1)")); }), 3075);
}

TEST(FunctionClockTest, TheClockGivesTodayAndNow) {
    EXPECT_EQ(Eval("Date() = Int(Now())"), "True");
    EXPECT_EQ(Eval("DateDiff('d', Date(), Now())"), "0");
    EXPECT_EQ(Eval("Time() < 1"), "True");
    EXPECT_EQ(Eval("Year(Date())"), std::to_string(basic::CivilOf(basic::Today()).year));
}

TEST(FunctionTableTest, NoFunctionTakesMoreArgumentsThanACallHolds) {
    for (const auto functions : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        for (const Function& function : functions) {
            EXPECT_LE(function.most, kMostArguments) << basic::ToUtf8(function.name);
            EXPECT_EQ(FindFunction(function.name), &function) << basic::ToUtf8(function.name);
        }
    }
}

}  // namespace
}  // namespace quardele::sql
