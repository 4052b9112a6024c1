// The search of the lists: FindFirst and FindNext on an open list, beside SQLite.
#pragma once

#include "both_sides.h"
#include "report.h"

namespace quardele::bench {

/// Throws std::runtime_error when the two sides do not find the same number of rows.
void MeasureSearch(Report& report, int runs, BothSides& sides, const std::filesystem::path& file);

}  // namespace quardele::bench
