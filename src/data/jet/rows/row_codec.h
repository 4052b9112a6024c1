// Where the columns lie within the bytes of a row.
#pragma once

#include <optional>

#include <jet/table.h>

#include "bytes.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// The fixed parts of a row, found from both of its ends. Refers to the row's bytes.
class RowLayout {
 public:
    /// Throws 3343 when the row is shorter than its own counts say.
    RowLayout(const ByteView& row, const TableDef& table, const Format& format);
    /// The same row again, with what was found the first time.
    RowLayout(const ByteView& row, const RowShape& shape, const Format& format)
        : row_(row), narrow_(!format.wideText), shape_(shape) {}

    [[nodiscard]] const RowShape& Shape() const { return shape_; }

    [[nodiscard]] bool IsNull(const StoredColumn& column) const;
    /// The stored bytes of a column; empty option when it is null. A Boolean has no bytes: ask IsNull.
    [[nodiscard]] std::optional<ByteView> Field(const StoredColumn& column) const {
        return IsNull(column) ? std::nullopt : std::optional(StoredBytes(column));
    }
    /// The same for a column that is not null.
    [[nodiscard]] ByteView StoredBytes(const StoredColumn& column) const;
    /// All bytes between the column count and the variable data.
    [[nodiscard]] ByteView FixedArea() const;

 private:
    void LocateVariable();
    [[nodiscard]] std::size_t FixedStart() const { return narrow_ ? 1 : 2; }
    [[nodiscard]] std::size_t VariableOffset(std::size_t index) const;

    ByteView row_;
    bool narrow_;  ///< Access 97: counts and offsets of one byte, with jumps
    RowShape shape_;
};

// Asked for every cell of every row, and so here.

inline std::size_t RowLayout::VariableOffset(std::size_t index) const {
    if (!narrow_) {
        return row_.U16(shape_.firstOffset - index * 2);
    }
    std::size_t offset = row_.U8(shape_.firstOffset - index);
    for (std::size_t jump = 0; jump < shape_.jumps && row_.U8(shape_.bitmap - 2 - jump) <= index; ++jump) {
        offset += 256;
    }
    return offset;
}

inline bool RowLayout::IsNull(const StoredColumn& column) const {
    if (column.number >= shape_.columnCount ||
        (!column.fixed && column.variableIndex >= shape_.variableCount)) {
        return true;
    }
    return (row_.U8(shape_.bitmap + column.number / 8u) >> (column.number % 8) & 1) == 0;
}

inline ByteView RowLayout::StoredBytes(const StoredColumn& column) const {
    if (column.fixed) {
        const std::size_t length = NaturalSize(column.type).value_or(column.length);
        if (FixedStart() + column.fixedOffset + length > shape_.bitmap) {
            ThrowDamaged(row_.Page(), u"colonne hors de sa ligne");
        }
        return row_.Sub(FixedStart() + column.fixedOffset, length);
    }
    const std::size_t start = VariableOffset(column.variableIndex);
    const std::size_t end = VariableOffset(column.variableIndex + std::size_t{1});
    if (start > end || end > shape_.bitmap) {
        ThrowDamaged(row_.Page(), u"colonne hors de sa ligne");
    }
    return row_.Sub(start, end - start);
}

/// The bytes of a column of fixed size, of `length`, in a row with counts of two bytes; empty option when it
/// is null. They follow from both ends of the row, without a look at the variable columns: lists ask a
/// million rows for their numbers.
inline std::optional<ByteView> FixedField(std::span<const std::uint8_t> row, std::uint32_t page,
                                          const StoredColumn& column, std::size_t length) {
    constexpr std::size_t kStart = 2;
    const std::size_t columns = row.size() < kStart ? 0 : row[0] | std::size_t{row[1]} << 8;
    const std::size_t bitmapSize = (columns + 7) / 8;
    if (kStart + bitmapSize > row.size()) {
        ThrowDamaged(page, u"ligne trop courte");
    }
    const std::size_t bitmap = row.size() - bitmapSize;
    if (column.number >= columns || (row[bitmap + column.number / 8u] >> (column.number % 8) & 1) == 0) {
        return std::nullopt;
    }
    const std::size_t at = kStart + column.fixedOffset;
    if (at + length > bitmap) {
        ThrowDamaged(page, u"colonne hors de sa ligne");
    }
    return ByteView(row.subspan(at, length), page);
}

}  // namespace quardele::jet
