#include "row_codec.h"

namespace quardele::jet {

RowLayout::RowLayout(const ByteView& row, const TableDef& table, const Format& format)
    : row_(row), narrow_(!format.wideText) {
    columnCount_ = narrow_ ? row_.U8(0) : row_.U16(0);
    fixedStart_ = narrow_ ? 1 : 2;
    const std::size_t bitmapSize = (columnCount_ + 7) / 8;
    if (fixedStart_ + bitmapSize > row_.Size()) {
        ThrowDamaged(row_.Page(), u"ligne trop courte");
    }
    bitmap_ = row_.Size() - bitmapSize;
    if (table.variableColumns != 0) {
        LocateVariable(format);
    }
}

void RowLayout::LocateVariable(const Format& format) {
    const std::size_t width = format.wideText ? 2 : 1;
    if (bitmap_ < fixedStart_ + width) {
        ThrowDamaged(row_.Page(), u"ligne trop courte");
    }
    const std::size_t countAt = bitmap_ - width;
    variableCount_ = narrow_ ? row_.U8(countAt) : row_.U16(countAt);
    // One jump entry per 256 bytes of row stands between the count and the offsets.
    jumps_ = narrow_ ? (row_.Size() - 1) / 256 : 0;
    const std::size_t tail = jumps_ + (variableCount_ + 1) * width;
    if (countAt < fixedStart_ + tail) {
        ThrowDamaged(row_.Page(), u"table des positions hors de sa ligne");
    }
    firstOffset_ = countAt - jumps_ - width;
    if (narrow_ && jumps_ > 0 && (firstOffset_ - variableCount_) / 256 < jumps_) {
        --jumps_;  // the last one has nothing to jump over
    }
}

std::size_t RowLayout::VariableOffset(std::size_t index) const {
    if (!narrow_) {
        return row_.U16(firstOffset_ - index * 2);
    }
    std::size_t offset = row_.U8(firstOffset_ - index);
    for (std::size_t jump = 0; jump < jumps_ && row_.U8(bitmap_ - 2 - jump) <= index; ++jump) {
        offset += 256;
    }
    return offset;
}

bool RowLayout::IsNull(const StoredColumn& column) const {
    if (column.number >= columnCount_ || (!column.fixed && column.variableIndex >= variableCount_)) {
        return true;
    }
    return (row_.U8(bitmap_ + column.number / 8u) >> (column.number % 8) & 1) == 0;
}

ByteView RowLayout::FixedArea() const {
    const std::size_t end = firstOffset_ == 0 ? bitmap_ : VariableOffset(0);
    if (end < fixedStart_) {
        ThrowDamaged(row_.Page(), u"table des positions hors de sa ligne");
    }
    return row_.Sub(fixedStart_, end - fixedStart_);
}

std::optional<ByteView> RowLayout::Field(const StoredColumn& column) const {
    if (IsNull(column)) {
        return std::nullopt;
    }
    if (column.fixed) {
        const std::size_t length = NaturalSize(column.type).value_or(column.length);
        if (fixedStart_ + column.fixedOffset + length > bitmap_) {
            ThrowDamaged(row_.Page(), u"colonne hors de sa ligne");
        }
        return row_.Sub(fixedStart_ + column.fixedOffset, length);
    }
    const std::size_t start = VariableOffset(column.variableIndex);
    const std::size_t end = VariableOffset(column.variableIndex + std::size_t{1});
    if (start > end || end > bitmap_) {
        ThrowDamaged(row_.Page(), u"colonne hors de sa ligne");
    }
    return row_.Sub(start, end - start);
}

}  // namespace quardele::jet
