// Decimals of up to 28 digits.
#include <basic/decimal_arithmetic.h>

#include <gtest/gtest.h>

#include <basic/conversion.h>
#include <basic/decimal.h>
#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

Decimal D(TextView written) {
    return ReadDecimal(written).value();
}

std::string Shown(const Decimal& value) {
    return ToUtf8(CStr(value));
}

TEST(DecimalArithmeticTest, AddsWithAnySigns) {
    EXPECT_EQ(Shown(Sum(D(u"1.5"), D(u"2.25"))), "3,75");
    EXPECT_EQ(Shown(Sum(D(u"1.5"), D(u"-2.25"))), "-0,75");
    EXPECT_EQ(Shown(Sum(D(u"-1.5"), D(u"2.25"))), "0,75");
    EXPECT_EQ(Shown(Sum(D(u"-1.5"), D(u"-2.25"))), "-3,75");
    EXPECT_EQ(Shown(Difference(D(u"0.1"), D(u"0.1"))), Shown(D(u"0.0")));
    EXPECT_EQ(Shown(Sum(D(u"9999999999999999999999999998"), D(u"1"))), "9999999999999999999999999999");
}

TEST(DecimalArithmeticTest, MultipliesExactlyWhileThereIsRoom) {
    EXPECT_EQ(Shown(Product(D(u"12345678901234"), D(u"98765432109876"))), "1219326311370155158039986984");
    EXPECT_EQ(Shown(Product(D(u"-0.5"), D(u"0.5"))), "-0,25");
    EXPECT_FALSE(Product(D(u"-0.5"), D(u"0")).negative);
}

TEST(DecimalArithmeticTest, RoundsHalvesToEven) {
    EXPECT_EQ(Shown(Product(D(u"100000000000000000000000000.0"), D(u"10"))), "1000000000000000000000000000");
    EXPECT_EQ(Shown(Product(D(u"100000000000000000000000001.5"), D(u"0.1"))),
              "10000000000000000000000000,15");
    EXPECT_EQ(Shown(Product(D(u"1000000000000000000000000001"), D(u"0.5"))), "500000000000000000000000000,5");
    EXPECT_EQ(Shown(Sum(D(u"1000000000000000000000000000"), D(u"0.5"))), "1000000000000000000000000000");
    EXPECT_EQ(Shown(Sum(D(u"1000000000000000000000000001"), D(u"0.5"))), "1000000000000000000000000002");
    EXPECT_EQ(Shown(Sum(D(u"1000000000000000000000000000"), D(u"0.51"))), "1000000000000000000000000001");
}

TEST(DecimalArithmeticTest, OverflowsBeyond28Digits) {
    const auto number = [](auto action) {
        try {
            static_cast<void>(action());
        } catch (const RuntimeError& failure) {
            return failure.Number();
        }
        return 0;
    };
    EXPECT_EQ(number([] { return Sum(D(u"9999999999999999999999999999"), D(u"1")); }), 6);
    EXPECT_EQ(number([] { return Product(D(u"1000000000000000"), D(u"1000000000000000")); }), 6);
    EXPECT_EQ(number([] { return Sum(D(u"9999999999999999999999999999"), D(u"0.5")); }), 6);
}

TEST(DecimalArithmeticTest, DividesByAWholeNumber) {
    EXPECT_EQ(Shown(Quotient(D(u"10"), 4)), "2,5");
    EXPECT_EQ(Shown(Quotient(D(u"1"), 3)), "0,3333333333333333333333333333");
    EXPECT_EQ(Shown(Quotient(D(u"-2"), 3)), "-0,6666666666666666666666666667");
    EXPECT_EQ(Shown(Quotient(D(u"9999999999999999999999999999"), 2)), "5000000000000000000000000000");
}

TEST(DecimalArithmeticTest, ComparesWhateverTheScale) {
    EXPECT_TRUE(Compare(D(u"1.50"), D(u"1.5")) == 0);
    EXPECT_TRUE(Compare(D(u"-1.5"), D(u"1")) < 0);
    EXPECT_TRUE(Compare(D(u"-1.5"), D(u"-1.4999")) < 0);
    EXPECT_TRUE(Compare(D(u"9999999999999999999999999999"), D(u"0.0000000000000000000000000001")) > 0);
}

TEST(DecimalArithmeticTest, TakesExactNumbersOnly) {
    EXPECT_EQ(Shown(ExactDecimal(std::int32_t{-7}).value()), "-7");
    EXPECT_EQ(Shown(ExactDecimal(true).value()), "-1");
    EXPECT_EQ(Shown(ExactDecimal(Currency{15000}).value()), "1,5");
    EXPECT_FALSE(ExactDecimal(1.5).has_value());
    EXPECT_FALSE(ExactDecimal(Text(u"1")).has_value());
}

TEST(DecimalArithmeticTest, DoublesStandForTheirShortestDigits) {
    EXPECT_EQ(Shown(ShortestDecimal(0.1).value()), "0,1");
    EXPECT_EQ(Shown(ShortestDecimal(-1e20).value()), "-100000000000000000000");
    EXPECT_FALSE(ShortestDecimal(1e300).has_value());
    EXPECT_FALSE(ShortestDecimal(1e-300).has_value());
}

}  // namespace
}  // namespace quardele::basic
