// Nodes of subqueries, and of what stands for a value inside one.
#pragma once

#include <memory>

#include "expressions/node.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// A value that the row around a subquery gives.
[[nodiscard]] NodePtr MakeParameter(std::size_t position, StaticType type);
/// A column of a query in the FROM clause.
[[nodiscard]] NodePtr MakeQueryColumn(std::size_t source, std::size_t column, StaticType type);

// A subquery runs once for all rows that give it the same parameters.

/// The one value of a subquery, Null when it has no row. Evaluation throws 3354 when it has several.
[[nodiscard]] NodePtr MakeScalarSubquery(std::shared_ptr<const SelectPlan> plan, NodeList parameters,
                                         Text statement);
[[nodiscard]] NodePtr MakeExists(std::shared_ptr<const SelectPlan> plan, NodeList parameters);
/// A comparison with all values of a subquery, or with any. Throws 3464 when the two sides can never compare.
[[nodiscard]] NodePtr MakeQuantified(BinaryOperator op, bool all, NodePtr operand,
                                     std::shared_ptr<const SelectPlan> plan, NodeList parameters);

}  // namespace quardele::sql
