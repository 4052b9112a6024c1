// Adding a column to a table that may have rows.
#pragma once

#include "structure_change.h"

namespace quardele::jet {

/// Only the definition changes: rows that are there stay as they are, which means Null in the new column.
/// Throws as Database::AddColumn says.
void AppendColumn(StructureChange& change, const CatalogTable& table, const Column& column);

}  // namespace quardele::jet
