// Adding a column to a table that may have rows.
#pragma once

#include "structure/structure_change.h"

namespace quardele::jet {

/// Rows that are there stay as they are, which means Null in the new column; but with the first column of
/// variable length they get room for its offsets.
/// Throws as Database::AddColumn says.
void AppendColumn(StructureChange& change, const CatalogTable& table, const Column& column);

}  // namespace quardele::jet
