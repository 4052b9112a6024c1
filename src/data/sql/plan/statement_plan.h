// From a statement as it was written to its plan.
#pragma once

#include <jet/database.h>

#include "plan/select_plan.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// The plan of a statement: of its one SELECT or of a UNION of several; `outer` as for Binder. Throws what
/// BindSelect and MakeSelectPlan throw; 3307 when the parts of a UNION have different numbers of columns.
[[nodiscard]] SelectPlan MakeStatementPlan(jet::Database& database, Statement statement,
                                           OuterScope* outer = nullptr);

}  // namespace quardele::sql
