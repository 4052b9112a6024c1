// Names of table cells as Writer gives them: letters for the column, then the row ("A1", "Z1", "a1", "z1",
// "AA1" ...); a cell that was divided has more numbers behind ("B2.1.2").
#pragma once

#include <basic/text.h>

namespace quardele::word::writer {

/// 0-based; both -1 for a text that is no cell name.
struct CellName {
    int column = -1;
    int row = -1;
    friend bool operator==(const CellName&, const CellName&) = default;
};

[[nodiscard]] CellName ParseCellName(basic::TextView name);
/// The name of a cell that was not divided.
[[nodiscard]] basic::Text CellText(const CellName& cell);

}  // namespace quardele::word::writer
