// Columns of the engine and of statements as fields of the object model, and back.
#pragma once

#include <dao/field.h>
#include <jet/types.h>

namespace quardele::dao {

[[nodiscard]] FieldType FieldTypeOf(jet::ColumnType type);
[[nodiscard]] Field FieldOf(const jet::Column& column);
/// A column to be made like a field.
[[nodiscard]] jet::Column ColumnOf(const Field& field);

}  // namespace quardele::dao
