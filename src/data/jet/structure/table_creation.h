// Making a table.
#pragma once

#include "structure/structure_change.h"

namespace quardele::jet {

/// Throws as Database::CreateTable says.
void MakeTable(StructureChange& change, const TableDesign& design);

}  // namespace quardele::jet
