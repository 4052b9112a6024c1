// From a bound tree to nodes.
#pragma once

#include "expressions/node.h"
#include "plan/source.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// What names and parts stand for while an expression is compiled.
struct CompileScope {
    /// Of source columns, by NameMeaning::source.
    const std::vector<Source>* sources = nullptr;
    /// Of result columns, by NameMeaning::column.
    std::vector<StaticType> resultTypes;
    /// In a grouped statement: the expressions whose values the result row holds, in its order. A part of a
    /// tree that is the same as one of them is read from there, and source columns elsewhere are an error.
    const std::vector<const Expression*>* grouped = nullptr;
    /// Of parameters, by NameMeaning::column.
    const std::vector<StaticType>* parameterTypes = nullptr;
};

/// Throws 3122 for a column that is neither grouped nor aggregated, 3085, 3464, 3075.
[[nodiscard]] NodePtr Compile(const Expression& expression, const CompileScope& scope);
/// The same for an expression that stands as a condition; throws 3464 when its values are never conditions.
[[nodiscard]] NodePtr CompileCondition(const Expression& expression, const CompileScope& scope);

}  // namespace quardele::sql
