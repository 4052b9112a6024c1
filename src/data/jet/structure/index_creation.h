// Making an index over the rows of a table.
#pragma once

#include "structure/structure_change.h"

namespace quardele::jet {

/// Throws as Database::CreateIndex says; what the rows refuse is found before anything is written.
void MakeIndex(StructureChange& change, const CatalogTable& table, const IndexDesign& design);

}  // namespace quardele::jet
