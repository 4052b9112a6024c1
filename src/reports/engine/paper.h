// Paper in twips.
#pragma once

#include <QPageLayout>
#include <QPointF>
#include <QSizeF>

namespace quardele::engine {

inline constexpr qreal kTwipsPerPoint = 20;
inline constexpr qreal kTwipsPerInch = 1440;

/// The whole page in whole twips, as it lies: A4 is 11906 by 16838.
[[nodiscard]] QSizeF SizeOf(const QPageLayout& layout);
/// Where the room inside the margins begins.
[[nodiscard]] QPointF CornerOf(const QPageLayout& layout);
/// The room inside the margins.
[[nodiscard]] QSizeF RoomOf(const QPageLayout& layout);

}  // namespace quardele::engine
