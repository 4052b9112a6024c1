// The five tools of every list, and what grids share with them.
#pragma once

#include <functional>

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

/// What a tool does on a grid and its data control; returns whether it did its work.
using ToolRunner = std::function<bool(int action, forms::Grid& grid, forms::DataControl& data)>;
/// The place where the tools' dialogs attach. They are not part of the program yet, so the runner that stands
/// here from the start does nothing and returns false.
[[nodiscard]] ToolRunner& TheToolRunner();

/// Runs a tool on a grid and its data control: 0 selection, 1 search, 2 sort, 3 print, 4 Excel. Returns
/// whether the tool did its work.
bool GridToolAction(int action, forms::Grid& grid, forms::DataControl& data);

/// Puts the header of the active column in italics, the others upright.
void MarkActiveColumn(forms::Grid& grid);

/// A right click on a column header opens the selection on that column, on a cell the search; elsewhere
/// nothing.
void GridRightClick(forms::Form& form, forms::Grid& grid, forms::DataControl& data, int clickType, int col,
                    int row, int mouseX, int mouseY);

}  // namespace quardele::listtools
