#include "structure/index_creation.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "definitions/index_descriptor.h"
#include "structure/catalog_rows.h"
#include "structure/definition_pages.h"
#include "structure/index_filling.h"
#include "structure/table_layout.h"

namespace quardele::jet {

namespace {

/// The index as the rows of the table will be looked at through it; it has no tree yet.
RealIndex Planned(const TableDef& def, const IndexDesign& design) {
    RealIndex index;
    for (const IndexPart& part : design.columns) {
        index.columns.push_back({.column = def.FindColumn(part.column), .ascending = part.ascending});
    }
    index.unique = design.unique || design.primary;
    index.required = design.required || design.primary;
    index.ignoreNulls = design.ignoreNulls && !design.primary;
    return index;
}

void CheckTexts(const TableDef& def, const RealIndex& index) {
    for (const IndexColumn& part : index.columns) {
        const StoredColumn& column = def.stored[static_cast<std::size_t>(part.column)];
        if (column.IsText() && !column.HasGeneralOrder()) {
            throw basic::RuntimeError(
                basic::error::kOperationNotSupported,
                u"Les textes de ce champ suivent l'ordre d'une autre langue ; il ne peut pas être indexé.");
        }
    }
}

}  // namespace

void MakeIndex(StructureChange& change, const CatalogTable& table, const IndexDesign& design) {
    const TableImpl existing = change.TableOn(table.page);
    const TableDef& def = existing.Def();
    DefinitionParts parts = DefinitionParts::Split({def.bytes, def.page});
    AppendIndex(design, parts);
    const RealIndex planned = Planned(def, design);
    CheckTexts(def, planned);
    const IndexEntries entries = EntriesOf(existing, planned);
    MapRows maps(change.Pages(), change.Allocator(), def.ownedMap.page);
    LayOutIndex(change.Pages(), change.Allocator(), maps, def.page, parts.realIndexes.back());
    StoreDefinition(change.Pages(), change.Allocator(), def.page, parts.Join());
    const TableDef changed = TableDef::Read(change.Pages(), def.page);
    FillIndex(change.Pages(), change.Allocator(), changed, changed.realIndexes.size() - 1, entries);
    CatalogRows(change).NoteChange(table);
}

}  // namespace quardele::jet
