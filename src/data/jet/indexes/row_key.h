// The key that a row has in an index.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "definitions/table_def.h"
#include "file/page.h"
#include "rows/row_codec.h"

namespace quardele::jet {

/// The data of a column as keys are made of them: memo texts read from their pages, one byte for a Boolean.
[[nodiscard]] std::optional<ByteString> ColumnData(const PageSource& pages, const StoredColumn& column,
                                                   const RowLayout& row);

/// A key, and what the rules of indexes ask about it.
struct RowKey {
    ByteString bytes;
    bool anyNull = false;
    bool allNull = true;
    bool known = true;  ///< false when a text has units whose order in indexes is not known
};

/// The key of values given in the order of the index's columns.
[[nodiscard]] RowKey MakeKey(const TableDef& table, const RealIndex& index, const Format& format,
                             const std::vector<std::optional<ByteString>>& values);
[[nodiscard]] RowKey MakeKey(const TableDef& table, const RealIndex& index, const Format& format,
                             std::span<const std::optional<ByteView>> values);

}  // namespace quardele::jet
