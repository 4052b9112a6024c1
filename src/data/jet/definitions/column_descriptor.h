// The descriptor of a column in a table definition.
#pragma once

#include "bytes.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Where a column stands within its table and its rows.
struct ColumnPlace {
    std::uint16_t number = 0;
    std::uint16_t variableIndex = 0;  ///< for a fixed column the number of variable ones before it
    std::uint16_t fixedOffset = 0;
    std::uint16_t display = 0;
};

/// Whether values of the type lie in the variable part of new tables' rows.
[[nodiscard]] bool IsVariable(ColumnType type);
/// Whether values of the type may lie outside of their rows.
[[nodiscard]] bool IsLong(ColumnType type);
/// Bytes that a column takes in the fixed part of a row.
[[nodiscard]] std::uint16_t FixedSize(ColumnType type);

/// Throws 3125 for an impossible name, 3251 for a type, a size or a precision that no column can have.
void CheckColumn(const Column& column);

/// Throws 3047 when not even a row of Nulls fits on a page: `fixedArea` bytes, and the numbers of columns of
/// variable length and of all columns.
void CheckRowLength(std::size_t fixedArea, std::size_t variable, std::size_t columns);

/// Whether the table's definition keeps the numbers of the column: there is room for one such column.
[[nodiscard]] inline bool IsCounter(const Column& column) {
    return column.autoNumber && column.type == ColumnType::Long;
}
[[noreturn]] void ThrowImpossibleType(const Column& column);

/// The descriptor of a column that CheckColumn lets pass.
[[nodiscard]] ByteString ColumnDescriptor(const Column& column, const ColumnPlace& place);

}  // namespace quardele::jet
