#include "rows/row_update.h"

#include <basic/runtime_error.h>

#include "definitions/column_rules.h"
#include "rows/value_codec.h"

namespace quardele::jet {

namespace {

// Only the keys that are new.
IndexKeys Changed(const IndexKeys& before, const IndexKeys& after) {
    IndexKeys changed(after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i] && after[i]->bytes != before[i]->bytes) {
            changed[i] = after[i];
        }
    }
    return changed;
}

}  // namespace

RowUpdate::RowUpdate(Transaction& pages, const TableDef& table)
    : pages_(pages),
      table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      relations_(pages, table),
      rows_(pages, allocator_, table) {}

void RowUpdate::Run(RowId id, std::span<const ColumnChange> changes) {
    const RowPlace place = rows_.Find(id);
    RowDraft row = Stored(place);
    const IndexKeys before = indexes_.KeysOf(row, changes);
    const std::vector<OldValue> replaced = Give(changes, row);
    row.Fit();
    const IndexKeys after = indexes_.KeysOf(row, changes);
    indexes_.CheckReplace(id, before, after);
    relations_.CheckParents(Changed(before, after));
    const auto write = [&] {
        for (const OldValue& old : replaced) {
            longValues_.Remove(*old.column, {old.field, table_.page});
        }
        indexes_.Replace(id, before, after);
        rows_.Replace(id, place, row.Store(longValues_));
    };
    if (!relations_.HasChildrenOf(before, after)) {
        return write();
    }
    pages_.AsPart([&] {
        write();
        TellChildren(row, before, after);
    });
}

void RowUpdate::TellChildren(const RowDraft& row, const IndexKeys& before, const IndexKeys& after) {
    relations_.ForChildrenOf(
        before, after, [&](const Relation& relation, const Partner& partner, const std::vector<RowId>& rows) {
            if (!relation.cascadeUpdate) {
                ThrowHasChildren();
            }
            std::vector<ColumnChange> changes;
            const auto& own = table_.realIndexes[relation.realIndex].columns;
            for (std::size_t i = 0; i < own.size(); ++i) {
                changes.push_back({partner.Index().columns[i].column, ValueOf(row, own[i].column)});
            }
            for (const RowId child : rows) {
                pages_.LockRow(child);
                RowUpdate(pages_, partner.Table()).Run(child, changes);
            }
        });
}

Variant RowUpdate::ValueOf(const RowDraft& row, int column) const {
    const auto ordinal = static_cast<std::size_t>(column);
    const auto& field = row.At(ordinal);
    if (!field) {
        return basic::Null{};
    }
    return table_.stored[ordinal].type == ColumnType::Boolean
               ? Variant(field->front() != 0)
               : DecodeValue(table_.stored[ordinal], {*field, table_.page}, pages_.Layout());
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
