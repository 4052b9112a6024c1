// Values on their way into fields of each type.
#include "field_value.h"

#include "dao_test.h"

namespace quardele::dao {
namespace {

Field FieldOfType(FieldType type, int size) {
    Field field = TableDef::CreateField();
    field.name = u"TVEH_MARQUE";
    field.type = type;
    field.size = size;
    return field;
}

TEST(FieldValue, EmptyAndNullBecomeNullButForTruthFields) {
    EXPECT_TRUE(ConvertedFor(FieldType::Text, Variant()).IsNull());
    EXPECT_TRUE(ConvertedFor(FieldType::Date, Null{}).IsNull());
    EXPECT_EQ(ConvertedFor(FieldType::Boolean, Null{}), Variant(false));
}

TEST(FieldValue, EachTypeTakesWhatCanBeConverted) {
    EXPECT_EQ(ConvertedFor(FieldType::Boolean, std::int16_t{-1}), Variant(true));
    EXPECT_EQ(ConvertedFor(FieldType::Byte, u"255"), Variant(std::uint8_t{255}));
    EXPECT_EQ(ConvertedFor(FieldType::Integer, std::int32_t{-32768}), Variant(std::int16_t{-32768}));
    EXPECT_EQ(ConvertedFor(FieldType::Long, 2.5), Variant(std::int32_t{2}));
    EXPECT_EQ(ConvertedFor(FieldType::Currency, u"1,5"), Variant(basic::Currency{15000}));
    EXPECT_EQ(ConvertedFor(FieldType::Single, u"1,5"), Variant(1.5F));
    EXPECT_EQ(ConvertedFor(FieldType::Double, std::int16_t{3}), Variant(3.0));
    EXPECT_EQ(ConvertedFor(FieldType::Decimal, std::int16_t{3}), Variant(std::int16_t{3}));
    EXPECT_EQ(ConvertedFor(FieldType::Decimal, u"3,5"), Variant(3.5));
    EXPECT_EQ(ConvertedFor(FieldType::Date, u"01/01/2100"), Variant(basic::DateOf(2100, 1, 1)));
    EXPECT_EQ(ConvertedFor(FieldType::Text, std::int16_t{12}), Variant(u"12"));
    EXPECT_EQ(ConvertedFor(FieldType::Memo, basic::DateOf(2026, 12, 31)), Variant(u"31/12/2026"));
    const basic::Binary bytes = {1, 2, 3};
    EXPECT_EQ(ConvertedFor(FieldType::Binary, bytes), Variant(bytes));
    EXPECT_EQ(ConvertedFor(FieldType::LongBinary, bytes), Variant(bytes));
    EXPECT_EQ(ConvertedFor(FieldType::Guid, basic::Guid{}), Variant(basic::Guid{}));
}

TEST(FieldValue, WhatCannotBeConvertedRaises3421) {
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Byte, std::int16_t{256}); }),
              error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Byte, std::int16_t{-1}); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Integer, std::int32_t{32768}); }),
              error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Long, u""); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Long, 1e10); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Single, 1e300); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Date, u"demain"); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Text, basic::Binary{1}); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Binary, u"x"); }), error::kTypeConversion);
    EXPECT_EQ(ErrorOf([] { (void)ConvertedFor(FieldType::Guid, u"x"); }), error::kTypeConversion);
}

TEST(FieldValue, EmptyTextRaises3315WhereItIsNotAllowed) {
    Field field = FieldOfType(FieldType::Text, 30);
    EXPECT_EQ(ErrorOf([&] { (void)CheckedFor(field, u""); }), error::kEmptyText);
    EXPECT_TRUE(CheckedFor(field, Null{}).IsNull());
    field.allowZeroLength = true;
    EXPECT_EQ(CheckedFor(field, u""), Variant(u""));
}

TEST(FieldValue, TextTooLongRaises3163AndNamesTheField) {
    const Field field = FieldOfType(FieldType::Text, 3);
    EXPECT_EQ(CheckedFor(field, u"ÉTÉ"), Variant(u"ÉTÉ"));
    EXPECT_EQ(ErrorOf([&] { (void)CheckedFor(field, u"ÉTÉS"); }), error::kTextTooLong);
    EXPECT_NE(DescriptionOfErrorOf([&] { (void)CheckedFor(field, u"ÉTÉS"); }).find(u"TVEH_MARQUE"),
              Text::npos);
}

TEST(FieldValue, MemoHasNoLimit) {
    const Field field = FieldOfType(FieldType::Memo, 0);
    const Text text(100000, u'x');
    EXPECT_EQ(CheckedFor(field, text), Variant(text));
}

}  // namespace
}  // namespace quardele::dao
