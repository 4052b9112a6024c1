// The names of column types in statements.
#pragma once

#include <jet/types.h>

namespace quardele::sql {

using basic::TextView;

/// What may stand in parentheses behind the name of a type.
enum class TypeSize { None, Length, Precision };

struct ColumnTypeName {
    TextView word;
    jet::ColumnType type;
    TypeSize size = TypeSize::None;
    bool autoNumber = false;
};

/// The type by one of its names, case ignored; null when there is none.
[[nodiscard]] const ColumnTypeName* FindColumnType(TextView word);

}  // namespace quardele::sql
