// Numbers of up to 28 digits, which no double holds.
#include "query_fixture.h"
#include "syntax/parser.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

TEST(DecimalArithmeticTest, KeepsAllDigits) {
    EXPECT_EQ(Eval("12345678901234567890.12 + 1"), "12345678901234567891,12");
    EXPECT_EQ(Eval("12345678901234567890.12 - 12345678901234567890.11"), "0,01");
    EXPECT_EQ(Eval("1234567890123456789 * 3"), "3703703670370370367");
    EXPECT_EQ(Eval("-12345678901234567890.12 + 1"), "-12345678901234567889,12");
}

TEST(DecimalArithmeticTest, LiteralsAreWrittenWithAPoint) {
    EXPECT_EQ(Print(*ParseCondition(u"12345678901234567890.12")), u"12345678901234567890.12");
    EXPECT_EQ(Print(*ParseCondition(u"00000000000000000000000000000.5")), u"0.5");
}

TEST(DecimalArithmeticTest, RoundsHalvesToEvenBehindTheLastDigit) {
    EXPECT_EQ(Eval("9000000000000000000000000000 + 1000000000000000.5"), "9000000000001000000000000000");
    EXPECT_EQ(Eval("9000000000000000000000000001 + 1000000000000000.5"), "9000000000001000000000000002");
}

TEST(DecimalArithmeticTest, OverflowsBeyondItsDigits) {
    EXPECT_EQ(ErrorOfStatement(Stock(), "SELECT 9999999999999999999999999999 + 9999999999999999999999999999"),
              6);
}

TEST(DecimalArithmeticTest, ComparesToTheLastDigit) {
    EXPECT_EQ(Eval("12345678901234567890.12 = 12345678901234567890.13"), "False");
    EXPECT_EQ(Eval("12345678901234567890.12 < 12345678901234567890.13"), "True");
    EXPECT_EQ(Eval("12345678901234567890.120 = 12345678901234567890.12"), "True");
    EXPECT_EQ(Eval("12345678901234567890.12 In (1, 12345678901234567890.12)"), "True");
    EXPECT_EQ(Eval("12345678901234567890.12 In (12345678901234567890.13)"), "False");
    EXPECT_EQ(Eval("12345678901234567890.12 Between 12345678901234567890.11 And 12345678901234567890.13"),
              "True");
}

class DecimalColumnTest : public ChangeTest {
 protected:
    DecimalColumnTest() {
        Do("CREATE TABLE N (Num LONG PRIMARY KEY, Prix DECIMAL(28, 4))");
        int number = 0;
        for (const char* price :
             {"123456789012345678.0003", "123456789012345678.0001", "-123456789012345678.0002",
              "-123456789012345678.0001", "0.1", "123456789012345678", "Null"}) {
            Do("INSERT INTO N VALUES (" + std::to_string(++number) + ", " + price + ")");
        }
    }
};

TEST_F(DecimalColumnTest, SortsToTheLastDigit) {
    EXPECT_EQ(Get("SELECT Num FROM N ORDER BY Prix"), (Lines{"7", "3", "4", "5", "6", "2", "1"}));
    EXPECT_EQ(Get("SELECT Num FROM N ORDER BY Prix DESC"), (Lines{"1", "2", "6", "5", "4", "3", "7"}));
}

TEST_F(DecimalColumnTest, AddsUpExactly) {
    EXPECT_EQ(Get("SELECT Sum(Prix) FROM N WHERE Num IN (1, 2)"), Lines{"246913578024691356,0004"});
    EXPECT_EQ(Get("SELECT Avg(Prix) FROM N WHERE Num IN (1, 2)"), Lines{"123456789012345678,0002"});
    EXPECT_EQ(Get("SELECT Sum(Prix) FROM N WHERE Num IN (3, 4)"), Lines{"-246913578024691356,0003"});
    EXPECT_EQ(Get("SELECT Max(Prix) - Min(Prix) FROM N WHERE Num IN (1, 2)"), Lines{"0,0002"});
}

TEST_F(DecimalColumnTest, IsTheSameWithAnotherType) {
    EXPECT_EQ(Get("SELECT Num FROM N WHERE Prix = 0.1"), Lines{"5"});
    EXPECT_EQ(Get("SELECT Num FROM N WHERE Prix IN (0.1, 123456789012345678.0001)"), (Lines{"2", "5"}));
    EXPECT_EQ(Get("SELECT Prix + 1 FROM N WHERE Num = 1"), Lines{"123456789012345679,0003"});
    EXPECT_EQ(Get("SELECT Prix * 2.5 FROM N WHERE Num = 5"), Lines{"0.25"});
}

TEST_F(DecimalColumnTest, TellsDistinctRowsAndGroupsApart) {
    EXPECT_EQ(Get("SELECT DISTINCT Prix FROM N WHERE Prix > 1").size(), 3U);
    EXPECT_EQ(Get("SELECT Count(*) FROM N AS a INNER JOIN N AS b ON a.Prix = b.Prix"), Lines{"6"});
}

}  // namespace
}  // namespace quardele::sql
