#include "rows/row_codec.h"

namespace quardele::jet {

RowLayout::RowLayout(const ByteView& row, const TableDef& table, const Format& format)
    : row_(row), narrow_(!format.wideText) {
    shape_.columnCount = narrow_ ? row_.U8(0) : row_.U16(0);
    const std::size_t bitmapSize = (shape_.columnCount + std::size_t{7}) / 8;
    if (FixedStart() + bitmapSize > row_.Size()) {
        ThrowDamaged(row_.Page(), u"ligne trop courte");
    }
    shape_.bitmap = static_cast<std::uint16_t>(row_.Size() - bitmapSize);
    if (table.variableColumns != 0) {
        LocateVariable();
    }
}

void RowLayout::LocateVariable() {
    const std::size_t width = narrow_ ? 1 : 2;
    if (shape_.bitmap < FixedStart() + width) {
        ThrowDamaged(row_.Page(), u"ligne trop courte");
    }
    const std::size_t countAt = shape_.bitmap - width;
    shape_.variableCount = narrow_ ? row_.U8(countAt) : row_.U16(countAt);
    // One jump entry per 256 bytes of row stands between the count and the offsets.
    const std::size_t jumps = narrow_ ? (row_.Size() - 1) / 256 : 0;
    if (countAt < FixedStart() + jumps + (shape_.variableCount + std::size_t{1}) * width) {
        ThrowDamaged(row_.Page(), u"table des positions hors de sa ligne");
    }
    const std::size_t first = countAt - jumps - width;
    // The last jump may have nothing to jump over.
    const bool oneTooMany = jumps > 0 && (first - shape_.variableCount) / 256 < jumps;
    shape_.firstOffset = static_cast<std::uint16_t>(first);
    shape_.jumps = static_cast<std::uint16_t>(jumps - (oneTooMany ? 1 : 0));
}

ByteView RowLayout::FixedArea() const {
    const std::size_t end = shape_.firstOffset == 0 ? shape_.bitmap : VariableOffset(0);
    if (end < FixedStart()) {
        ThrowDamaged(row_.Page(), u"table des positions hors de sa ligne");
    }
    return row_.Sub(FixedStart(), end - FixedStart());
}

}  // namespace quardele::jet
