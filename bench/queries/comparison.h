// The sections of the report.
#pragma once

#include "both_sides.h"
#include "report.h"

namespace quardele::bench {

/// Races every statement. Throws std::runtime_error when the two sides do not give the same rows.
void MeasureStatements(Report& report, int runs, BothSides& sides);

/// What a list costs that is opened and looked at, and a search in it.
void MeasureList(Report& report, int runs, const std::filesystem::path& file);

}  // namespace quardele::bench
