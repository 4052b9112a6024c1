#include "structure/table_removal.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "pages/usage_map.h"
#include "structure/catalog_rows.h"
#include "structure/definition_pages.h"
#include "structure/map_rows.h"

namespace quardele::jet {

namespace {

/// The pages of one table on their way back.
class PageReturn {
 public:
    PageReturn(Transaction& pages, PageAllocator& allocator) : pages_(pages), allocator_(allocator) {}

    /// Gives back the pages of a map, which must say that they belong to `owner`, and the pages that the
    /// map's own bits lie on.
    void FreeMapped(RowPointer map, std::size_t ownerAt, std::uint32_t owner) {
        for (const std::uint32_t page : ReadUsageMap(pages_, map)) {
            if (pages_.Read(page)->View().U32(ownerAt) != owner) {
                ThrowDamaged(page, u"page d'une autre table");
            }
            allocator_.Free(page);
        }
        FreeMap(map);
    }
    void FreeMap(RowPointer map) {
        for (const std::uint32_t page : BitmapPages(pages_, map)) {
            allocator_.Free(page);
        }
        if (map.page != 0) {
            maps_.push_back(map);
        }
    }
    void RemoveMaps() { RemoveMapRows(pages_, allocator_, maps_); }

 private:
    Transaction& pages_;
    PageAllocator& allocator_;
    std::vector<RowPointer> maps_;
};

void FreePages(StructureChange& change, const TableDef& def) {
    Transaction& pages = change.Pages();
    const Format& format = pages.Layout();
    PageReturn back(pages, change.Allocator());
    for (const StoredColumn& column : def.stored) {
        back.FreeMapped(column.ownedMap, format.data.owner, long_value::kOwner);
        back.FreeMap(column.freeMap);
    }
    for (const RealIndex& index : def.realIndexes) {
        back.FreeMapped(index.map, format.index.owner, def.page);
    }
    back.FreeMapped(def.ownedMap, format.data.owner, def.page);
    back.FreeMap(def.freeMap);
    back.RemoveMaps();
    for (const std::uint32_t page : ContinuationPages(pages, def.page)) {
        change.Allocator().Free(page);
    }
    change.Allocator().Free(def.page);
}

}  // namespace

void RemoveTable(StructureChange& change, const CatalogTable& table) {
    const TableDef def = TableDef::Read(change.Pages(), table.page);
    CatalogRows catalog(change);
    const bool related = std::any_of(def.realIndexes.begin(), def.realIndexes.end(),
                                     [](const RealIndex& index) { return index.related; });
    if (related || catalog.HasRelationship(table.name)) {
        throw basic::RuntimeError(basic::error::kUsedInRelation,
                                  basic::Describe(basic::error::kUsedInRelation, table.name));
    }
    FreePages(change, def);
    catalog.RemoveTable(table);
}

}  // namespace quardele::jet
