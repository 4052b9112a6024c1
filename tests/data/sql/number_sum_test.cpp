// Sums and averages of numbers of several types.
#include "query_fixture.h"

namespace quardele::sql {
namespace {

class NumberSumTest : public ChangeTest {
 protected:
    NumberSumTest() {
        Do("CREATE TABLE N (Num LONG PRIMARY KEY, Prix CURRENCY, Exact DECIMAL(28, 4))");
        Do("INSERT INTO N VALUES (1, 9500.5, 123456789012345678.0003)");
        Do("INSERT INTO N VALUES (2, 3200, Null)");
        Do("INSERT INTO N VALUES (3, Null, 0.5)");
        Do("INSERT INTO N VALUES (4, 3200, Null)");
    }
};

TEST_F(NumberSumTest, WholeNumbersAmongAmountsCount) {
    EXPECT_EQ(Get("SELECT Sum(Nz(Prix, 100)), Avg(Nz(Prix, 100)) FROM N"), Lines{"16000.5 EUR 4000.125 EUR"});
}

TEST_F(NumberSumTest, NumbersWithDecimalsAmongAmountsCount) {
    EXPECT_EQ(Get("SELECT Sum(IIf(Prix Is Null, 0.5, Prix)), Avg(IIf(Prix Is Null, 0.5, Prix)) FROM N"),
              Lines{"15901 3975.25"});
}

TEST_F(NumberSumTest, DecimalsTakeAmountsAndWholeNumbersExactly) {
    EXPECT_EQ(Get("SELECT Sum(Nz(Exact, Num)) FROM N"), Lines{"123456789012345684,5003"});
    EXPECT_EQ(Get("SELECT Sum(Nz(Exact, Prix)) FROM N"), Lines{"123456789012352078,5003"});
    EXPECT_EQ(Get("SELECT Avg(Nz(Exact, Num)) FROM N WHERE Num > 1"), Lines{"2,166666666666666666666666667"});
    EXPECT_EQ(Get("SELECT Sum(Nz(Exact, -Num)) FROM N WHERE Num > 1"), Lines{"-5,5"});
}

TEST_F(NumberSumTest, DecimalsAmongOtherNumbersCount) {
    EXPECT_EQ(Get("SELECT Sum(IIf(Num = 3, Exact, 1.25E0)) FROM N WHERE Num > 1"), Lines{"3"});
}

TEST_F(NumberSumTest, SumsBeyondTheirTypeOverflow) {
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT Sum(CDbl('1e308')) FROM N"), 6);
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT Sum(CCur('900000000000000')) FROM N"), 6);
}

TEST_F(NumberSumTest, OtherValuesAreRefused) {
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT Avg('a' & Num) FROM N"), 3464);
}

}  // namespace
}  // namespace quardele::sql
