#include "row_update.h"

#include <basic/runtime_error.h>

#include "column_rules.h"
#include "long_value.h"
#include "usage_map.h"

namespace quardele::jet {

RowUpdate::RowUpdate(Transaction& pages, const TableDef& table)
    : pages_(pages),
      table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table) {}

void RowUpdate::Run(RowId id, std::span<const ColumnChange> changes) {
    const Place place = Find(id);
    const RowBytes stored = ReadRow(pages_, place.data);
    ByteString fixedArea;
    RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    const IndexKeys before = indexes_.Keys(fields, changes);
    for (const ColumnChange& change : changes) {
        Apply(change, fields);
    }
    indexes_.Replace(id, before, indexes_.Keys(fields, changes));
    ByteString row = BuildRow(table_, fields, fixedArea);
    if (row.size() > kLargestRow) {
        MoveLongValuesOut(changes, fields);
        row = BuildRow(table_, fields, fixedArea);
    }
    if (row.size() > kLargestRow) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
    StoreRow(id, place, row);
}

RowUpdate::Place RowUpdate::Find(RowId id) const {
    const PagePtr page = pages_.Read(id.page);
    const DataPage slots(*page, pages_.Layout());
    if (slots.Owner() != table_.page || id.slot >= slots.SlotCount()) {
        ThrowDamaged(id.page, u"ligne inexistante");
    }
    const std::uint16_t flags = slots.Flags(id.slot);
    if ((flags & slot::kHidden) != 0) {
        throw basic::RuntimeError(basic::error::kRecordDeleted);
    }
    if (flags != slot::kMoved) {
        return {id, false};
    }
    const RowPointer data = LoadRowPointer(slots.Row(id.slot), 0);
    if (DataPage(*pages_.Read(data.page), pages_.Layout()).Owner() != table_.page) {
        ThrowDamaged(id.page, u"ligne déplacée hors de sa table");
    }
    return {data, true};
}

void RowUpdate::Apply(const ColumnChange& change, RowFields& fields) {
    const auto ordinal = static_cast<std::size_t>(change.column);
    if (ordinal >= fields.size()) {
        throw basic::RuntimeError(basic::error::kNoSuchField);
    }
    const StoredColumn& column = table_.stored[ordinal];
    std::optional<ByteString> value = AcceptedValue(table_.columns[ordinal], column, change.value);
    if (column.IsLong()) {
        if (fields[ordinal]) {
            longValues_.Remove(column, {*fields[ordinal], table_.page});
        }
        if (value) {
            value = longValues_.Store(column, *value);
        }
    }
    fields[ordinal] = std::move(value);
}

// A row that has grown too long keeps its new short memos elsewhere.
void RowUpdate::MoveLongValuesOut(std::span<const ColumnChange> changes, RowFields& fields) {
    for (const ColumnChange& change : changes) {
        const auto ordinal = static_cast<std::size_t>(change.column);
        const StoredColumn& column = table_.stored[ordinal];
        auto& field = fields[ordinal];
        if (column.IsLong() && field &&
            LongValueDescriptor::Load({*field, table_.page}).form == long_value::kInline) {
            field = longValues_.StoreOutside(column, ReadLongValue(pages_, {*field, table_.page}));
        }
    }
}

void RowUpdate::StoreRow(RowId id, const Place& place, const ByteString& row) {
    DataPageEditor editor(pages_, place.data.page);
    if (editor.Replace(place.data.slot, place.moved ? slot::kHidden : std::uint16_t{0}, row)) {
        editor.Store();
        KeepFreeMap(place.data.page, editor);
    } else {
        MoveRow(id, place, row);
    }
}

// The row's own slot keeps a pointer to where the data lie now; a pointer never leads to another one.
void RowUpdate::MoveRow(RowId id, const Place& place, const ByteString& row) {
    if (place.moved) {
        DataPageEditor old(pages_, place.data.page);
        old.Delete(place.data.slot);
        old.Store();
        KeepFreeMap(place.data.page, old);
    }
    ByteString pointer(kRowPointerSize);
    StoreRowPointer(pointer, AddMoved(row));
    DataPageEditor editor(pages_, id.page);
    if (!editor.Replace(id.slot, slot::kMoved, std::move(pointer))) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
    editor.Store();
    KeepFreeMap(id.page, editor);
}

RowPointer RowUpdate::AddMoved(const ByteString& row) {
    for (const std::uint32_t number : ReadUsageMap(pages_, table_.freeMap)) {
        if (!DataPageEditor::MayHold(*pages_.Read(number), pages_.Layout(), table_.page, row.size())) {
            continue;
        }
        DataPageEditor editor(pages_, number);
        if (const auto slotNumber = editor.Add(slot::kHidden, row)) {
            editor.Store();
            KeepFreeMap(number, editor);
            return {number, *slotNumber};
        }
    }
    Page& page = allocator_.Allocate();
    const std::uint32_t number = page.number;
    DataPageEditor::Initialise(page, pages_.Layout(), table_.page);
    allocator_.AddToMap(table_.ownedMap, number);
    DataPageEditor editor(pages_, number);
    const auto slotNumber = editor.Add(slot::kHidden, row);
    if (!slotNumber) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
    editor.Store();
    KeepFreeMap(number, editor);
    return {number, *slotNumber};
}

void RowUpdate::KeepFreeMap(std::uint32_t page, const DataPageEditor& editor) {
    if (editor.FreeBytes() >= kWorthTrying) {
        allocator_.AddToMap(table_.freeMap, page);
    } else {
        allocator_.RemoveFromMap(table_.freeMap, page);
    }
}

}  // namespace quardele::jet
