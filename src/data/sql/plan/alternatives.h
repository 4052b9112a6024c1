// Conditions that are true in one of several ways: each way may have an index of its own.
#pragma once

#include <vector>

#include "plan/conjuncts.h"

namespace quardele::sql {

/// The ways in which a condition can be true, each a condition of its own: the parts of an OR, a comparison
/// for each value of an IN list. Empty for other conditions, and for more ways than are worth a look each.
[[nodiscard]] std::vector<ExpressionPtr> AlternativesOf(const Expression& condition);

/// Whether a condition is never true for a row that has no part from one of these sources: a comparison with
/// a Null is not.
[[nodiscard]] bool RefusesMissing(const Expression& condition, SourceSet sources);

}  // namespace quardele::sql
