// Putting a row's bytes together.
#pragma once

#include <optional>
#include <vector>

#include "definitions/table_def.h"

namespace quardele::jet {

/// The stored bytes of each column by ordinal, none for Null; of a Boolean one byte, of a long value its
/// descriptor with what follows.
using RowFields = std::vector<std::optional<ByteString>>;

/// The fields of a stored row. `fixedArea` gets the bytes of its fixed area, in which columns that were
/// deleted from the table go on living.
[[nodiscard]] RowFields SplitRow(const ByteView& row, const TableDef& table, const Format& format,
                                 ByteString& fixedArea);

/// The bytes of a row apart from the data of its variable columns, when its fixed area is at least so long.
[[nodiscard]] std::size_t FrameLength(const TableDef& table, std::size_t fixedArea);

/// The row in the layout of Access 2000-2003, with the table's present number of columns.
[[nodiscard]] ByteString BuildRow(const TableDef& table, const RowFields& fields, ByteString fixedArea);

}  // namespace quardele::jet
