// Which tables of a join a row of the others meets once only.
#pragma once

#include <vector>

#include "rows/row_context.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// One per table: whether the columns that join it to others include all of one of its unique indexes, so
/// that it is the "one" side; a query in the place of a table has none. The names of the clauses are bound.
[[nodiscard]] std::vector<bool> FindOneSides(const Select& select, const Tables& tables);

}  // namespace quardele::sql
