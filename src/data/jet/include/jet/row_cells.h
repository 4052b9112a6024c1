// All cells of row after row, for who goes through a table and wants every value.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <jet/table.h>

namespace quardele::jet {

/// The value of one column in one row, without memory of its own.
struct Cell {
    enum class Kind : std::uint8_t {
        Null,
        Truth,
        Whole,   ///< Byte, Integer, Long
        Number,  ///< Double
        Date,    ///< in days
        Utf8,
        Memo,   ///< a text that may lie on other pages: Row::AppendUtf8At has it
        Other,  ///< Row::Value has it
    };
    Kind kind = Kind::Null;
    std::int32_t whole = 0;  ///< of Whole, and 1 or 0 of Truth
    double number = 0;       ///< of Number and Date
    std::string_view text;   ///< of Utf8
};

/// Reads the rows of one table, which must outlive it. A row is taken apart once for all its columns, and the
/// memory of its cells serves the next row.
class RowCells {
 public:
    explicit RowCells(const Table& table);

    /// One cell for each column. They are good until the next call, and not longer than the row. Throws 3343
    /// where Row::Value would.
    [[nodiscard]] std::span<const Cell> Of(const Row& row);

 private:
    const TableImpl& table_;
    std::vector<Cell> cells_;
    std::vector<std::string> texts_;  ///< by column: those that are not stored in UTF-8
};

}  // namespace quardele::jet
