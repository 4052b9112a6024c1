// Runs plans.
#pragma once

#include <vector>

#include "plan/select_plan.h"
#include "rows/kept_rows.h"
#include "rows/row_marks.h"

namespace quardele::sql {

/// The rows of one run: either identities, one vector per source, or values, row by row.
struct ResultRows {
    std::size_t size = 0;
    std::vector<std::vector<jet::RowId>> keys;
    std::vector<Variant> values;
    KeptRows kept;  ///< of identities
    RowMarks marks;
};

[[nodiscard]] ResultRows Execute(const SelectPlan& plan, const RunEnvironment& environment = {});
/// The same for a plan whose rows are identities, with their marks.
[[nodiscard]] ResultRows ExecuteMarked(const SelectPlan& plan);

}  // namespace quardele::sql
