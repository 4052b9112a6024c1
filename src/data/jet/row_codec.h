// Where the columns lie within the bytes of a row.
#pragma once

#include <optional>

#include <jet/table.h>

#include "bytes.h"
#include "table_def.h"

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
    [[nodiscard]] std::optional<ByteView> Field(const StoredColumn& column) const;
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

}  // namespace quardele::jet
