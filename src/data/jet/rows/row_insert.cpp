#include "rows/row_insert.h"

#include <basic/runtime_error.h>

#include "definitions/auto_value.h"
#include "definitions/column_rules.h"

namespace quardele::jet {

RowInsert::RowInsert(Transaction& pages, const TableDef& table)
    : table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      relations_(pages, table),
      rows_(pages, allocator_, table),
      counters_(pages, table.page) {}

RowId RowInsert::Run(std::span<const ColumnChange> values) {
    RowDraft row = Drafted(values);
    row.Fit();
    const IndexKeys keys = indexes_.KeysOf(row);
    indexes_.CheckNew(keys);
    relations_.CheckParents(keys);
    NoteAutoNumbers(row);
    const RowId id = rows_.Add(row.Store(longValues_));
    indexes_.Add(id, keys);
    counters_.AddRows(1);
    return id;
}

RowDraft RowInsert::Drafted(std::span<const ColumnChange> values) const {
    std::vector<const Variant*> given(table_.stored.size(), nullptr);
    for (const ColumnChange& change : values) {
        const auto ordinal = static_cast<std::size_t>(change.column);
        if (ordinal >= given.size()) {
            throw basic::RuntimeError(basic::error::kNoSuchField);
        }
        given[ordinal] = &change.value;
    }
    static const Variant kNothing = basic::Null{};
    RowDraft row(table_);
    for (std::size_t i = 0; i < given.size(); ++i) {
        row.Give(i, AcceptedValueOf(i, given[i] != nullptr ? *given[i] : kNothing));
    }
    return row;
}

std::optional<ByteString> RowInsert::AcceptedValueOf(std::size_t ordinal, const Variant& value) const {
    const StoredColumn& stored = table_.stored[ordinal];
    if (stored.autoNumber && (value.IsNull() || value.IsEmpty())) {
        return NextAutoValue(table_.columns[ordinal], counters_);
    }
    return AcceptedValue(table_.columns[ordinal], stored, value);
}

void RowInsert::NoteAutoNumbers(const RowDraft& row) {
    for (std::size_t i = 0; i < table_.stored.size(); ++i) {
        if (table_.stored[i].autoNumber) {
            NoteAutoValue(table_.columns[i], *row.At(i), counters_);
        }
    }
}

}  // namespace quardele::jet
