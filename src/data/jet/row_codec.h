// Where the columns lie within the bytes of a row.
#pragma once

#include <optional>

#include "bytes.h"
#include "table_def.h"

namespace quardele::jet {

/// The fixed parts of a row, found from both of its ends. Refers to the row's bytes.
class RowLayout {
 public:
    /// Throws 3343 when the row is shorter than its own counts say.
    RowLayout(const ByteView& row, const TableDef& table, const Format& format);

    [[nodiscard]] bool IsNull(const StoredColumn& column) const;
    /// The stored bytes of a column; empty option when it is null. A Boolean has no bytes: ask IsNull.
    [[nodiscard]] std::optional<ByteView> Field(const StoredColumn& column) const;
    /// All bytes between the column count and the variable data.
    [[nodiscard]] ByteView FixedArea() const;

 private:
    void LocateVariable(const Format& format);
    [[nodiscard]] std::size_t VariableOffset(std::size_t index) const;

    ByteView row_;
    bool narrow_;  ///< Access 97: offsets of one byte with jumps
    std::size_t columnCount_ = 0;
    std::size_t bitmap_ = 0;  ///< position of the null bitmap
    std::size_t fixedStart_ = 0;
    std::size_t variableCount_ = 0;
    std::size_t firstOffset_ = 0;  ///< position of the offset of variable column 0; others lie before it
    std::size_t jumps_ = 0;        ///< number of jump entries between there and the count
};

}  // namespace quardele::jet
