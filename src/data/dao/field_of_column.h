// Columns of the engine and of statements as fields of the object model.
#pragma once

#include <dao/field.h>
#include <jet/types.h>

namespace quardele::dao {

[[nodiscard]] FieldType FieldTypeOf(jet::ColumnType type);
[[nodiscard]] Field FieldOf(const jet::Column& column);

}  // namespace quardele::dao
