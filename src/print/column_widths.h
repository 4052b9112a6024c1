// How wide the columns of a sheet are on paper. Lengths are twips.
#pragma once

#include <vector>

#include <print/sheet.h>

namespace quardele::print {

/// The widths that the sheet asks for, none of them more than the room that the column has, and the room that
/// is left on a page given to columns of the page whose texts would be cut. Reads all cells of the sheet.
[[nodiscard]] std::vector<int> WidthsOnPaper(const Sheet& sheet, int room);

}  // namespace quardele::print
