// From the FROM and WHERE clauses to the producers that find the rows.
//
// Conditions are tested as early as outer joins allow: on the rows of the one table they look at, else where
// the tables they look at come together. A table is read through an index when a condition fixes or bounds
// an indexed column. A join goes through an index of the inner table when few outer rows are expected, else
// through a hash; where conditions may leave few, it begins with the index and turns to the hash when it has
// met many. An inner join starts on the side that promises less work.
#pragma once

#include "plan/compiler.h"
#include "rows/producer.h"

namespace quardele::sql {

struct Plan {
    /// Conditions that look at no row: unless they are true there are no rows.
    NodeList constants;
    ProducerPtr rows;
};

/// The names of the clauses are bound; `scope` names the tables and must outlive the plan's making only.
[[nodiscard]] Plan MakePlan(const Select& select, const CompileScope& scope);

/// The rows that a FROM clause makes of tables of which some have one known row only; one entry per source,
/// empty for any row. Of the conditions of WHERE those count that link two tables, as they would in FROM.
[[nodiscard]] ProducerPtr PlanAround(const RowParts& known, const std::vector<FromItem>& from,
                                     const ExpressionPtr& where, const CompileScope& scope);

}  // namespace quardele::sql
