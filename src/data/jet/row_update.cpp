#include "row_update.h"

#include <basic/runtime_error.h>

#include "column_rules.h"

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
    RowDraft row = Stored(place);
    const IndexKeys before = indexes_.KeysOf(row, changes);
    const std::vector<OldValue> replaced = Give(changes, row);
    row.Fit();
    const IndexKeys after = indexes_.KeysOf(row, changes);
    indexes_.CheckReplace(id, before, after);
    for (const OldValue& old : replaced) {
        longValues_.Remove(*old.column, {old.field, table_.page});
    }
    indexes_.Replace(id, before, after);
    rows_.Replace(id, place, row.Store(longValues_));
}

RowDraft RowUpdate::Stored(const RowPlace& place) const {
    const RowBytes stored = ReadRow(pages_, place.data);
    ByteString fixedArea;
    RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    return {table_, std::move(fields), std::move(fixedArea)};
}

std::vector<RowUpdate::OldValue> RowUpdate::Give(std::span<const ColumnChange> changes, RowDraft& row) const {
    std::vector<OldValue> replaced;
    for (const ColumnChange& change : changes) {
        const auto ordinal = static_cast<std::size_t>(change.column);
        if (ordinal >= table_.stored.size()) {
            throw basic::RuntimeError(basic::error::kNoSuchField);
        }
        const StoredColumn& column = table_.stored[ordinal];
        if (column.autoNumber) {
            throw basic::RuntimeError(
                basic::error::kFieldNotUpdatable,
                basic::Describe(basic::error::kFieldNotUpdatable, table_.columns[ordinal].name));
        }
        if (column.IsLong() && row.At(ordinal) && !row.IsGiven(ordinal)) {
            replaced.push_back({&column, *row.At(ordinal)});
        }
        row.Give(ordinal, AcceptedValue(table_.columns[ordinal], column, change.value));
    }
    return replaced;
}

}  // namespace quardele::jet
