// What a grid shows as a sheet of paper.
#pragma once

#include <print/sheet.h>

#include <forms/grid.h>

namespace quardele::forms {

struct PrintSettings;

/// Loads all rows that the grid shows; throws what loading throws. Columns are so wide that all texts that
/// fit into them on the screen fit on paper, and all words of their headings. The sheet reads its cells from
/// the model and must not outlive it.
[[nodiscard]] print::Sheet SheetOf(const Grid& grid, const GridModel& model, const PrintSettings& settings);

}  // namespace quardele::forms
