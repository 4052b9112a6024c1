// What expressions come to: operators, their order, Nulls, types.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

struct Case {
    const char* expression;
    const char* value;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.expression;
}

class ExpressionTest : public testing::TestWithParam<Case> {};

TEST_P(ExpressionTest, ComesToItsValue) {
    EXPECT_EQ(Eval(GetParam().expression), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Arithmetic, ExpressionTest,
                         testing::Values(Case{"1 + 2 * 3", "7"}, Case{"(1 + 2) * 3", "9"},
                                         Case{"7 / 2", "3.5"}, Case{"7 \\ 2", "3"}, Case{"-7 \\ 2", "-3"},
                                         Case{"7 Mod 3", "1"}, Case{"-7 Mod 3", "-1"}, Case{"2 ^ 10", "1024"},
                                         Case{"-2 ^ 2", "-4"}, Case{"2 ^ -1", "0.5"}, Case{"10 - 2 - 3", "5"},
                                         Case{"100 \\ 7 \\ 2", "7"}, Case{"2 * 7 \\ 3", "4"},
                                         Case{"10 Mod 4 * 2", "2"}, Case{"7.5 \\ 2", "4"},
                                         Case{"6.5 Mod 4", "2"}, Case{"2147483647 + 1", "2147483648"},
                                         Case{"True + True", "-2"}, Case{"- - 3", "3"}, Case{"+4", "4"},
                                         Case{"1.5 + 1", "2.5"}));

INSTANTIATE_TEST_SUITE_P(Texts, ExpressionTest,
                         testing::Values(Case{"'a' & 'b'", "'ab'"}, Case{"'a' & Null & 'b'", "'ab'"},
                                         Case{"Null & Null", "''"}, Case{"'n' & 1.5", "'n1,5'"},
                                         Case{"'a' + 'b'", "'ab'"}, Case{"'a' + Null", "Null"},
                                         Case{"'3' + 4", "7"}, Case{"'1,5' * 2", "3"},
                                         Case{"1 & 2 + 3", "'15'"}));

INSTANTIATE_TEST_SUITE_P(Nulls, ExpressionTest,
                         testing::Values(Case{"1 + Null", "Null"}, Case{"Null * 0", "Null"},
                                         Case{"-Null", "Null"}, Case{"Null = Null", "Null"},
                                         Case{"Null <> 1", "Null"}, Case{"1 < Null", "Null"},
                                         Case{"Null Is Null", "True"}, Case{"1 Is Not Null", "True"},
                                         Case{"'' Is Null", "False"}, Case{"Null Like '*'", "Null"},
                                         Case{"Null In (1, 2)", "Null"},
                                         Case{"Null Between 1 And 2", "Null"}));

INSTANTIATE_TEST_SUITE_P(Comparisons, ExpressionTest,
                         testing::Values(Case{"'abc' = 'ABC'", "True"}, Case{"'abc' = 'abc   '", "True"},
                                         Case{"'e' = 'é'", "False"}, Case{"'é' < 'f'", "True"},
                                         Case{"'e' < 'é'", "True"}, Case{"'straße' = 'STRASSE'", "True"},
                                         Case{"True = -1", "True"}, Case{"False = 0", "True"},
                                         Case{"2 > 1.5", "True"}, Case{"1 >= 1", "True"},
                                         Case{"1 <> 1", "False"}, Case{"#12/31/2026# > #11/25/2026#", "True"},
                                         Case{"#12/31/2026# = #31/12/2026#", "True"},
                                         Case{"#12/31/2026# > 10", "True"}, Case{"1 = 1 = True", "True"}));

INSTANTIATE_TEST_SUITE_P(Ranges, ExpressionTest,
                         testing::Values(Case{"2 Between 1 And 3", "True"}, Case{"1 Between 1 And 3", "True"},
                                         Case{"4 Between 1 And 3", "False"},
                                         Case{"2 Between 3 And 1", "True"},
                                         Case{"2 Not Between 1 And 3", "False"},
                                         Case{"'b' Between 'A' And 'C'", "True"},
                                         Case{"5 Between Null And 3", "Null"}, Case{"2 In (1, 2, 3)", "True"},
                                         Case{"4 In (1, 2, 3)", "False"}, Case{"4 Not In (1, 2)", "True"},
                                         Case{"4 In (1, Null)", "Null"}, Case{"4 Not In (1, Null)", "Null"},
                                         Case{"'b' In ('A', 'B ')", "True"}, Case{"1 In (0 + 1)", "True"}));

INSTANTIATE_TEST_SUITE_P(Dates, ExpressionTest,
                         testing::Values(Case{"#12/31/2026# + 1", "#01/01/2027#"},
                                         Case{"#01/01/2027# - 1", "#12/31/2026#"},
                                         Case{"#01/01/2027# - #12/31/2026#", "1"},
                                         Case{"1 + #12/31/2026#", "#01/01/2027#"},
                                         Case{"#12/31/2026# & ''", "'31/12/2026'"}));

INSTANTIATE_TEST_SUITE_P(Binding, ExpressionTest,
                         testing::Values(Case{"Not 1 = 2", "True"}, Case{"Not True And False", "False"},
                                         Case{"True Or False And False", "True"},
                                         Case{"False And False Or True", "True"},
                                         Case{"1 + 1 = 2 And 3 > 2", "True"},
                                         Case{"'a' & 'b' = 'ab'", "True"},
                                         Case{"True Xor True Or True", "False"}, Case{"2 + 3 & 4", "'54'"}));

TEST(ExpressionErrorTest, DivisionByZero) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1 / 0")); }), 11);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1 \\ 0")); }), 11);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1 Mod 0.4")); }), 11);
}

TEST(ExpressionErrorTest, Overflow) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("10 ^ 400")); }), 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1E300 * 1E300")); }), 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("3000000000 \\ 2")); }), 6);
}

TEST(ExpressionErrorTest, TextsThatAreNoNumbers) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("'abc' * 2")); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("'' + 1")); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("(-8) ^ 0.5")); }), 5);
}

TEST(ExpressionErrorTest, TypesThatDoNotCompare) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1 = 'a'")); }), 3464);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("#12/31/2026# < 'a'")); }), 3464);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("1 In ('a')")); }), 3464);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Eval("Not 'a'")); }), 3464);
}

TEST(ExpressionErrorTest, APartThatIsNotChosenDoesNotFail) {
    EXPECT_EQ(Eval("IIf(True, 1, 1 / 0)"), "1");
    EXPECT_EQ(Eval("False And 1 / 0 = 1"), "False");
}

}  // namespace
}  // namespace quardele::sql
