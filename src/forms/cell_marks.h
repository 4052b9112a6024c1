// What the colours of cells mean and look like.
#pragma once

#include <QColor>

#include "grid_model.h"

namespace quardele::forms {

/// 0x00BBGGRR as the platform counts colours.
[[nodiscard]] inline QColor FromPlatform(int color) {
    return {color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF};
}

/// Pure red is a state with a picture of its own, which stands in empty cells.
[[nodiscard]] inline bool MeansNoHistory(const CellLook& look) {
    constexpr int kRed = 255;
    return look.backColor == kRed;
}

}  // namespace quardele::forms
