// How the texts of cells stand on paper, for whoever makes columns wide enough for them.
#pragma once

#include <QFont>

namespace quardele::print {

/// Distance in twips between a text and each side of its cell.
inline constexpr int kCellPadding = 60;

/// Font of cells; headings are bold. A pixel of it is a twip of paper.
[[nodiscard]] QFont CellFont(bool bold = false, bool italic = false);

}  // namespace quardele::print
