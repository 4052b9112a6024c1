// What a grid shows as a workbook.
#pragma once

#include <memory>
#include <vector>

#include <workbook/workbook.h>

#include <forms/grid.h>

namespace quardele::forms {

/// Columns that the grid shows and that are wide enough to be seen, counted from 0.
[[nodiscard]] std::vector<int> ShownColumns(const Grid& grid, const GridModel& model);

/// Headings and rows of all that the grid shows, rows that were not loaded yet included: dates and numbers as
/// such where the column or its field holds them and the text can be read so without saying something else,
/// ticks as "Oui" and "Non".
/// Throws RuntimeError 6 when there are too many rows, 5 for a name that no sheet can have, and what loading
/// throws.
[[nodiscard]] std::unique_ptr<workbook::Workbook> WorkbookOf(const Grid& grid, const GridModel& model,
                                                             const QString& sheetName);

}  // namespace quardele::forms
