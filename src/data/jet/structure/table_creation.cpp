#include "structure/table_creation.h"

#include "structure/catalog_rows.h"
#include "structure/table_layout.h"
#include "structure/table_plan.h"

namespace quardele::jet {

void MakeTable(StructureChange& change, const TableDesign& design) {
    DefinitionParts parts = PlanTable(design);
    CatalogRows catalog(change);
    catalog.CheckFree(design.name);
    const std::uint32_t page = change.Allocator().Allocate().number;
    MapRows maps(change.Pages(), change.Allocator());
    LayOutTable(change.Pages(), change.Allocator(), maps, page, std::move(parts));
    catalog.AddTable(design.name, page, PlanProperties(design));
}

}  // namespace quardele::jet
