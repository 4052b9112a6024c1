// What the columns of a UNION are, made of those of its parts.
#pragma once

#include <vector>

#include "plan/select_plan.h"

namespace quardele::sql {

/// The type that a column's values of all parts are converted to; Null literals go with every type, and texts
/// take numbers in. Empty for values that cannot be converted to each other.
[[nodiscard]] StaticType UnionType(const std::vector<SelectPlan>& parts, std::size_t column);

/// The size that fits the column's values of all parts, as jet::Column::size; 0 when it is not known.
[[nodiscard]] int UnionSize(const std::vector<SelectPlan>& parts, std::size_t column, jet::ColumnType type);

}  // namespace quardele::sql
