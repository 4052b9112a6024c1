#include "field_of_column.h"

#include <algorithm>
#include <iterator>

#include <basic/runtime_error.h>

namespace quardele::dao {

namespace {

// Of fields that say nothing of their size.
constexpr int kUsualLength = 255;
constexpr std::uint8_t kUsualDigits = 18;

struct TypePair {
    jet::ColumnType column;
    FieldType field;
};

constexpr TypePair kTypes[] = {
    {jet::ColumnType::Boolean, FieldType::Boolean},   {jet::ColumnType::Byte, FieldType::Byte},
    {jet::ColumnType::Integer, FieldType::Integer},   {jet::ColumnType::Long, FieldType::Long},
    {jet::ColumnType::Currency, FieldType::Currency}, {jet::ColumnType::Single, FieldType::Single},
    {jet::ColumnType::Double, FieldType::Double},     {jet::ColumnType::Date, FieldType::Date},
    {jet::ColumnType::Binary, FieldType::Binary},     {jet::ColumnType::Text, FieldType::Text},
    {jet::ColumnType::Ole, FieldType::LongBinary},    {jet::ColumnType::Memo, FieldType::Memo},
    {jet::ColumnType::Guid, FieldType::Guid},         {jet::ColumnType::Numeric, FieldType::Decimal},
    {jet::ColumnType::Opaque, FieldType::Binary},
};

}  // namespace

FieldType FieldTypeOf(jet::ColumnType type) {
    const auto* found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                     [type](const TypePair& pair) { return pair.column == type; });
    return found == std::end(kTypes) ? FieldType::Binary : found->field;
}

Field FieldOf(const jet::Table& table, int ordinal) {
    const jet::Column& column = table.Columns()[static_cast<std::size_t>(ordinal)];
    return {.name = column.name,
            .type = FieldTypeOf(column.type),
            .size = column.size,
            .required = column.required,
            .allowZeroLength = column.allowZeroLength,
            .defaultValue = column.defaultValue,
            .ordinalPosition = ordinal,
            .sourceTable = table.Name(),
            .sourceField = column.name};
}

jet::Column ColumnOf(const Field& field) {
    const auto* found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                     [&field](const TypePair& pair) { return pair.field == field.type; });
    if (found == std::end(kTypes)) {
        throw basic::RuntimeError(basic::error::kInvalidArgument);
    }
    jet::Column column;
    column.name = field.name;
    column.type = found->column;
    column.size = field.size;
    if (field.type == FieldType::Text && field.size == 0) {
        column.size = kUsualLength;
    } else if (field.type == FieldType::Decimal) {
        column.precision = kUsualDigits;
    }
    column.required = field.required;
    column.allowZeroLength = field.allowZeroLength;
    column.defaultValue = field.defaultValue;
    return column;
}

}  // namespace quardele::dao
