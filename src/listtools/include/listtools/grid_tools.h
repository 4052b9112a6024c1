// The five tools of every list, and what grids share with them.
#pragma once

#include <forms/data_control.h>
#include <forms/form.h>
#include <forms/grid.h>

namespace quardele::listtools {

/// Position of a grid right click in twips while it is handled, 0 otherwise.
struct DialogAnchor {
    int DialogAnchorX = 0;
    int DialogAnchorY = 0;
};
[[nodiscard]] DialogAnchor& Anchor();

/// Runs a tool on a grid and its data control: 0 selection, 1 search, 2 sort, 3 print, 4 Excel. The dialogs
/// are modal, so the tool has done its work when this returns. False when the operator declined the export,
/// true otherwise. The data control may be null for the export only; throws RuntimeError 91 elsewhere. What
/// a tool does not report to the operator by itself goes up to the caller.
bool GridToolAction(int action, forms::Grid& grid, forms::DataControl* data);

/// Puts the header of the active column in italics, the others upright.
void MarkActiveColumn(forms::Grid& grid);

/// A right click on a column header opens the selection on that column, on a cell the search; elsewhere
/// nothing.
void GridRightClick(forms::Form& form, forms::Grid& grid, forms::DataControl& data, int clickType, int col,
                    int row, int mouseX, int mouseY);

}  // namespace quardele::listtools
