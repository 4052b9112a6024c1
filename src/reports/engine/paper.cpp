#include "paper.h"

#include <cmath>

namespace quardele::engine {
namespace {

constexpr qreal kMillimetresPerInch = 25.4;

/// The papers that are known are defined in these units; others are made of points.
qreal TwipsIn(QPageSize::Unit unit) {
    switch (unit) {
        case QPageSize::Millimeter:
            return kTwipsPerInch / kMillimetresPerInch;
        case QPageSize::Inch:
            return kTwipsPerInch;
        default:
            return kTwipsPerPoint;
    }
}

}  // namespace

/// Qt rounds the size of a page to whole points otherwise.
QSizeF SizeOf(const QPageLayout& layout) {
    const QPageSize& page = layout.pageSize();
    const QSizeF twips = page.definitionSize() * TwipsIn(page.definitionUnits());
    const QSizeF whole(std::round(twips.width()), std::round(twips.height()));
    return layout.orientation() == QPageLayout::Landscape ? whole.transposed() : whole;
}

QPointF CornerOf(const QPageLayout& layout) {
    const QMarginsF margins = layout.margins(QPageLayout::Point) * kTwipsPerPoint;
    return {margins.left(), margins.top()};
}

QSizeF RoomOf(const QPageLayout& layout) {
    const QMarginsF margins = layout.margins(QPageLayout::Point) * kTwipsPerPoint;
    return SizeOf(layout).shrunkBy(margins);
}

}  // namespace quardele::engine
