// The statement that reads a report's records.
#pragma once

#include "compiled_formula.h"

namespace quardele::engine {

/// SELECT ... for the columns of the set, those left out whose tables give their first record only. A
/// comparison in `requirements` becomes part of the WHERE clause where the database finds at least the
/// records that the formula takes. Throws 3001 for tables that nothing links, or that need no link and have
/// one, 3265 for fields of links, groups and sort fields that do not exist.
[[nodiscard]] Text StatementText(const ReportDefinition& report, FormulaSet& formulas,
                                 const CompiledFormula& selection);

}  // namespace quardele::engine
