// Fonts for painters whose unit is a twip of paper.
#pragma once

#include <QFont>

namespace quardele::print {

inline constexpr qreal kTwipsPerPoint = 20;
inline constexpr qreal kTwipsPerInch = 1440;

/// A pixel of the font is a twip. Without hinting, widths are the same at all resolutions.
[[nodiscard]] QFont PaperFont(int points, bool bold = false, bool italic = false);
/// Height of a line in twips.
[[nodiscard]] int HeightOf(const QFont& font);

}  // namespace quardele::print
