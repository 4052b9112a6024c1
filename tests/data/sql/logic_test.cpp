// The tables of three-valued logic, through the whole dialect.
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

constexpr const char* kValues[] = {"True", "False", "Null"};

/// The results of an operator for True, False and Null on the left (rows) and right (columns).
std::vector<std::string> Table(const std::string& op) {
    std::vector<std::string> rows;
    for (const char* left : kValues) {
        std::string row;
        for (const char* right : kValues) {
            row += Eval(std::string(left) + " " + op + " " + right).front();
        }
        rows.push_back(row);
    }
    return rows;
}

using Rows3 = std::vector<std::string>;

TEST(LogicTest, And) {
    EXPECT_EQ(Table("And"), (Rows3{"TFN", "FFF", "NFN"}));
}
TEST(LogicTest, Or) {
    EXPECT_EQ(Table("Or"), (Rows3{"TTT", "TFN", "TNN"}));
}
TEST(LogicTest, Xor) {
    EXPECT_EQ(Table("Xor"), (Rows3{"FTN", "TFN", "NNN"}));
}
TEST(LogicTest, Eqv) {
    EXPECT_EQ(Table("Eqv"), (Rows3{"TFN", "FTN", "NNN"}));
}
TEST(LogicTest, Imp) {
    EXPECT_EQ(Table("Imp"), (Rows3{"TFN", "TTT", "TNN"}));
}

TEST(LogicTest, Not) {
    EXPECT_EQ(Eval("Not True"), "False");
    EXPECT_EQ(Eval("Not False"), "True");
    EXPECT_EQ(Eval("Not Null"), "Null");
}

TEST(LogicTest, NumbersOtherThanZeroAreTrue) {
    EXPECT_EQ(Eval("2 And -1"), "True");
    EXPECT_EQ(Eval("0 Or 0.0"), "False");
    EXPECT_EQ(Eval("Not 5"), "False");
}

TEST(LogicTest, OnlyTrueLetsARowThrough) {
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE Null").size(), 0U);
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE Not Null").size(), 0U);
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE True").size(), 5U);
    EXPECT_EQ(Rows(Stock(), "SELECT TSITE_CODE FROM TSITE WHERE 3").size(), 5U);
}

}  // namespace
}  // namespace quardele::sql
