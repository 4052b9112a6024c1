// The records of a report, read once.
#pragma once

#include <vector>

#include "compiled_formula.h"

namespace quardele::engine {

/// Values by record and column, in the order of the report.
struct Records {
    std::size_t columns = 0;
    std::size_t count = 0;
    std::vector<Variant> values;

    [[nodiscard]] const Variant& At(std::size_t record, std::size_t column) const {
        return values[record * columns + column];
    }
};

/// Reads the records that the selection formula takes, in the order of groups and sort fields. What the
/// selection asks for certain is asked of the database, so that it can seek. Throws the data engine's errors,
/// those of the formula, 3001 for tables that nothing links or that lie in different files.
[[nodiscard]] Records ReadRecords(const ReportDefinition& report, FormulaSet& formulas);

}  // namespace quardele::engine
