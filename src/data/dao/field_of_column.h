// Columns of the engine and of statements as fields of the object model, and back.
#pragma once

#include <dao/field.h>
#include <jet/table.h>

namespace quardele::dao {

[[nodiscard]] FieldType FieldTypeOf(jet::ColumnType type);
/// `column` is an ordinal.
[[nodiscard]] Field FieldOf(const jet::Table& table, int column);
/// A column to be made like a field.
[[nodiscard]] jet::Column ColumnOf(const Field& field);

}  // namespace quardele::dao
