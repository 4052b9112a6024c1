// Taking a table away.
#pragma once

#include "structure/structure_change.h"

namespace quardele::jet {

/// Gives all pages of the table back, and takes it out of the catalogue. Throws 3281 when a relationship uses
/// it.
void RemoveTable(StructureChange& change, const CatalogTable& table);

}  // namespace quardele::jet
