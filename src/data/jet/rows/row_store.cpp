#include "rows/row_store.h"

#include <basic/runtime_error.h>

namespace quardele::jet {

RowStore::RowStore(Transaction& pages, PageAllocator& allocator, const TableDef& table)
    : pages_(pages),
      table_(table.page),
      rows_(pages, allocator, {.owner = table.page, .ownedMap = table.ownedMap, .freeMap = table.freeMap}) {}

RowPlace RowStore::Find(RowId id) const {
    const PagePtr page = pages_.Read(id.page);
    if (page->Type() != PageType::Data) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);  // and its page with it, by somebody else
    }
    const DataPage slots(*page, pages_.Layout());
    if (slots.Owner() != table_ || id.slot >= slots.SlotCount()) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);
    }
    const std::uint16_t flags = slots.Flags(id.slot);
    if ((flags & slot::kHidden) != 0) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);
    }
    if (flags != slot::kMoved) {
        return {id, false};
    }
    const RowPointer data = LoadRowPointer(slots.Row(id.slot), 0);
    if (DataPage(*pages_.Read(data.page), pages_.Layout()).Owner() != table_) {
        ThrowDamaged(id.page, u"ligne déplacée hors de sa table");
    }
    return {data, true};
}

bool RowStore::IsDeleted(RowId id) const {
    const PagePtr page = pages_.Read(id.page);
    return DataPage(*page, pages_.Layout()).Flags(id.slot) == slot::kDeleted;
}

// A pointer never leads to another one: a row that moves again gives its last place up.
void RowStore::Replace(RowId id, const RowPlace& place, const ByteString& row) {
    if (rows_.TryReplace(place.data, place.moved ? slot::kHidden : std::uint16_t{0}, row)) {
        return;
    }
    if (place.moved) {
        rows_.Delete(place.data);
    }
    ByteString pointer(kRowPointerSize);
    StoreRowPointer(pointer, rows_.Add(slot::kHidden, row));
    if (!rows_.TryReplace(id, slot::kMoved, pointer)) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
}

void RowStore::Delete(RowId id, const RowPlace& place) {
    if (place.moved) {
        rows_.Delete(place.data);
    }
    rows_.Delete(id);
}

}  // namespace quardele::jet
