#include "row_update.h"

#include <basic/runtime_error.h>

#include "column_rules.h"
#include "long_value.h"

namespace quardele::jet {

RowUpdate::RowUpdate(Transaction& pages, const TableDef& table)
    : pages_(pages),
      table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      rows_(pages, allocator_, table) {}

void RowUpdate::Run(RowId id, std::span<const ColumnChange> changes) {
    const RowPlace place = rows_.Find(id);
    const RowBytes stored = ReadRow(pages_, place.data);
    ByteString fixedArea;
    RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    const IndexKeys before = indexes_.KeysOf(fields, changes);
    for (const ColumnChange& change : changes) {
        Apply(change, fields);
    }
    indexes_.Replace(id, before, indexes_.KeysOf(fields, changes));
    ByteString row = BuildRow(table_, fields, fixedArea);
    if (row.size() > kLargestRow) {
        MoveLongValuesOut(changes, fields);
        row = BuildRow(table_, fields, fixedArea);
    }
    if (row.size() > kLargestRow) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
    rows_.Replace(id, place, row);
}

void RowUpdate::Apply(const ColumnChange& change, RowFields& fields) {
    const auto ordinal = static_cast<std::size_t>(change.column);
    if (ordinal >= fields.size()) {
        throw basic::RuntimeError(basic::error::kNoSuchField);
    }
    const StoredColumn& column = table_.stored[ordinal];
    if (column.autoNumber) {
        throw basic::RuntimeError(
            basic::error::kFieldNotUpdatable,
            basic::Describe(basic::error::kFieldNotUpdatable, table_.columns[ordinal].name));
    }
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

}  // namespace quardele::jet
