#include "field_of_column.h"

namespace quardele::dao {

FieldType FieldTypeOf(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Boolean:
            return FieldType::Boolean;
        case jet::ColumnType::Byte:
            return FieldType::Byte;
        case jet::ColumnType::Integer:
            return FieldType::Integer;
        case jet::ColumnType::Long:
            return FieldType::Long;
        case jet::ColumnType::Currency:
            return FieldType::Currency;
        case jet::ColumnType::Single:
            return FieldType::Single;
        case jet::ColumnType::Double:
            return FieldType::Double;
        case jet::ColumnType::Date:
            return FieldType::Date;
        case jet::ColumnType::Text:
            return FieldType::Text;
        case jet::ColumnType::Ole:
            return FieldType::LongBinary;
        case jet::ColumnType::Memo:
            return FieldType::Memo;
        case jet::ColumnType::Guid:
            return FieldType::Guid;
        case jet::ColumnType::Numeric:
            return FieldType::Decimal;
        case jet::ColumnType::Binary:
        case jet::ColumnType::Opaque:
            break;
    }
    return FieldType::Binary;
}

Field FieldOf(const jet::Column& column) {
    return {.name = column.name,
            .type = FieldTypeOf(column.type),
            .size = column.size,
            .required = column.required,
            .allowZeroLength = column.allowZeroLength,
            .defaultValue = column.defaultValue};
}

}  // namespace quardele::dao
