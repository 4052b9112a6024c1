// Rows of the system tables, written column by column.
#pragma once

#include <span>
#include <utility>

#include <jet/table.h>

#include "commit/transaction.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// A column's name and its new value.
using NamedValue = std::pair<TextView, Variant>;

/// Values by the ordinals of a table. Throws 3343 when it lacks one of the columns: only system tables are
/// written in this way.
[[nodiscard]] std::vector<ColumnChange> ChangesOf(const TableDef& table, std::span<const NamedValue> values);

/// Adds a row to the table whose definition starts on a page.
RowId InsertNamed(Transaction& pages, std::uint32_t table, std::span<const NamedValue> values);

}  // namespace quardele::jet
