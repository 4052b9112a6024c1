// A column of a table definition or of a recordset.
#pragma once

#include <cstdint>

#include <basic/variant.h>

namespace quardele::dao {

/// Type numbers of the object model.
enum class FieldType : std::int16_t {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 20,
};

using basic::Text;
using basic::TextView;
using basic::Variant;

/// What a field is; a plain value. A new field (TableDef::CreateField) starts empty.
struct Field {
    Text name;
    FieldType type = FieldType::Text;
    int size = 0;  ///< texts: UTF-16 units; others: bytes
    bool required = false;
    bool allowZeroLength = false;
    Text defaultValue;        ///< expression text, empty for none
    int ordinalPosition = 0;  ///< 0-based, among the fields of the table or recordset
    Text sourceTable;         ///< the table that holds the values, empty for an expression
    Text sourceField;         ///< its column

    [[nodiscard]] const Text& Name() const { return name; }
    [[nodiscard]] FieldType Type() const { return type; }
    [[nodiscard]] int Size() const { return size; }
};

}  // namespace quardele::dao
