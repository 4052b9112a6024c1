// The columns of DBG_RELANCES and the way to read its cells.
#pragma once

#include <forms/grid.h>

namespace quardele::reminders {

inline constexpr int kRegistrationColumn = 2;
inline constexpr int kMakeColumn = 3;
inline constexpr int kCustomerColumn = 4;
inline constexpr int kWorkTypeColumn = 5;
inline constexpr int kLastVisitColumn = 6;
inline constexpr int kPeriodColumn = 7;
inline constexpr int kLetterColumn = 8;
inline constexpr int kAbandonColumn = 9;
inline constexpr int kSiteColumn = 10;

/// Makes a cell the addressed one. Row and column are set together, because loading a row moves them.
inline void Address(forms::Grid& list, int col, int row) {
    list.SetCol(col);
    list.SetRow(row);
}
[[nodiscard]] inline QString CellText(forms::Grid& list, int col, int row) {
    Address(list, col, row);
    return list.Text();
}
[[nodiscard]] inline QString CellValue(forms::Grid& list, int col, int row) {
    Address(list, col, row);
    return list.Value();
}

}  // namespace quardele::reminders
