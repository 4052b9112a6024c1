// A statement whose names have their meanings.
#pragma once

#include <memory>
#include <vector>

#include <jet/database.h>

#include "plan/binder.h"
#include "syntax/ast.h"

namespace quardele::sql {

struct BoundSelect {
    std::vector<Source> sources;
    /// The result columns, stars expanded. Names are final: the alias, the column's own name, "table.column"
    /// where that would stand twice, Expr1000 and following for expressions without a name.
    std::vector<ResultItem> items;
    /// The clauses; `items` and `from` of it are used up but for the shape of the joins.
    Select select;
    std::vector<OrderItem> orderBy;
    /// Whether rows are groups: by GROUP BY, HAVING or an aggregate.
    bool grouped = false;
    /// Of what a subquery asks of the row around it, null for no subquery; owned by the OuterScope.
    const std::vector<StaticType>* parameterTypes = nullptr;
};

/// Binds one SELECT and its order; `outer` as for Binder. Errors: those of OpenSources and Binder; 3096,
/// 3098, 3099, 3095 for an aggregate where none may stand.
[[nodiscard]] BoundSelect BindSelect(jet::Database& database, Select select, std::vector<OrderItem> orderBy,
                                     OuterScope* outer);

}  // namespace quardele::sql
