// The Excel file of a list.
#pragma once

#include <forms/data_control.h>
#include <forms/grid.h>

namespace quardele::listtools {

/// Asks, then writes the grid into the current folder, under the grid's tool tip; the record that is current
/// stays so, and where none is (an empty list: headings alone) none becomes it. `data` may be null. False
/// when the operator declines.
bool ExportList(forms::Grid& grid, forms::DataControl* data);

}  // namespace quardele::listtools
