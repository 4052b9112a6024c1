// Conditions taken apart at their ANDs.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "rows/producer.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// One part of a condition, all of which must be true, and the sources that it looks at.
struct Conjunct {
    const Expression* expression;
    SourceSet sources;
};
using Conjuncts = std::vector<Conjunct>;

[[nodiscard]] SourceSet SourcesOf(const Expression& expression);
/// Appends the parts of a condition; a null condition has none.
void AppendConjuncts(const ExpressionPtr& condition, Conjuncts& conjuncts);
/// Takes out those that look at no source outside a set.
[[nodiscard]] Conjuncts TakeWithin(Conjuncts& conjuncts, SourceSet set);

/// Two columns of different sources that a condition wants to be equal.
struct Link {
    NameMeaning left;
    NameMeaning right;
};
/// What a condition links, empty for any other condition.
[[nodiscard]] std::optional<Link> LinkOf(const Expression& condition);

/// The source column that an expression is, empty when it is anything else.
[[nodiscard]] std::optional<NameMeaning> ColumnOf(const Expression& expression);

}  // namespace quardele::sql
