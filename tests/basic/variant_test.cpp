#include <basic/variant.h>

#include "support.h"

namespace quardele::basic {
namespace {

TEST(VariantTest, StartsEmpty) {
    const Variant value;
    EXPECT_TRUE(value.IsEmpty());
    EXPECT_FALSE(value.IsNull());
    EXPECT_FALSE(value.IsNumber());
}

TEST(VariantTest, KeepsTheTypeItWasGiven) {
    EXPECT_TRUE(Variant(std::uint8_t{1}).Is<std::uint8_t>());
    EXPECT_TRUE(Variant(std::int16_t{1}).Is<std::int16_t>());
    EXPECT_TRUE(Variant(1).Is<std::int32_t>());
    EXPECT_TRUE(Variant(1.5F).Is<float>());
    EXPECT_TRUE(Variant(1.5).Is<double>());
    EXPECT_TRUE(Variant(true).Is<bool>());
    EXPECT_TRUE(Variant(u"x").IsText());
    EXPECT_TRUE(Variant(TextView(u"x")).IsText());
    EXPECT_TRUE(Variant(Date{1}).IsDate());
    EXPECT_TRUE(Variant(Null()).IsNull());
}

TEST(VariantTest, NumbersAreTheEightNumberTypes) {
    for (const Variant& number :
         {Variant(true), Variant(std::uint8_t{1}), Variant(std::int16_t{1}), Variant(1), Variant(Currency{1}),
          Variant(1.0F), Variant(1.0), Variant(Decimal{})}) {
        EXPECT_TRUE(number.IsNumber());
    }
    for (const Variant& other :
         {Variant(), Variant(Null()), Variant(Date{1}), Variant(Guid{}), Variant(u"1"), Variant(Binary{1})}) {
        EXPECT_FALSE(other.IsNumber());
    }
}

TEST(VariantTest, ReadingAnotherTypeIsATypeMismatch) {
    const Variant value(1);
    EXPECT_EQ(value.As<std::int32_t>(), 1);
    EXPECT_EQ(ErrorOf([&] { (void)value.As<double>(); }), 13);
    EXPECT_EQ(ErrorOf([&] { (void)value.As<Text>(); }), 13);
}

TEST(VariantTest, EqualMeansSameTypeAndValue) {
    EXPECT_EQ(Variant(u"a"), Variant(u"a"));
    EXPECT_NE(Variant(u"a"), Variant(u"A"));
    EXPECT_NE(Variant(1), Variant(1.0));
    EXPECT_NE(Variant(), Variant(Null()));
    EXPECT_EQ(Variant(Null()), Variant(Null()));
}

TEST(VariantTest, ACopyIsItsOwn) {
    Variant original(Text(u"avant"));
    const Variant copy = original;
    original = Text(u"après");
    EXPECT_EQ(copy.As<Text>(), u"avant");
}

}  // namespace
}  // namespace quardele::basic
