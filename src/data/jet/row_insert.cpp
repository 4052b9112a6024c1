#include "row_insert.h"

#include <basic/runtime_error.h>

#include "auto_value.h"
#include "column_rules.h"

namespace quardele::jet {

namespace {

// A long value that lies outside has a descriptor of its own length whatever it names.
bool LiesOutside(const ByteString& field) {
    return field.size() == long_value::kDescriptor && (field[3] & 0x80) == 0;
}

}  // namespace

RowInsert::RowInsert(Transaction& pages, const TableDef& table)
    : table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      rows_(pages, allocator_, table),
      counters_(pages, table.page) {}

RowId RowInsert::Run(std::span<const ColumnChange> values) {
    const RowFields data = Accepted(values);
    const IndexKeys keys = indexes_.KeysOfData(data);
    indexes_.CheckNew(keys);
    RowFields fields = FieldsFor(data);
    StoreLongValues(data, fields);
    const RowId id = rows_.Add(BuildRow(table_, fields, {}));
    indexes_.Add(id, keys);
    counters_.AddRows(1);
    NoteAutoNumbers(data);
    return id;
}

RowFields RowInsert::Accepted(std::span<const ColumnChange> values) const {
    std::vector<const Variant*> given(table_.stored.size(), nullptr);
    for (const ColumnChange& change : values) {
        const auto ordinal = static_cast<std::size_t>(change.column);
        if (ordinal >= given.size()) {
            throw basic::RuntimeError(basic::error::kNoSuchField);
        }
        given[ordinal] = &change.value;
    }
    static const Variant kNothing = basic::Null{};
    RowFields data;
    for (std::size_t i = 0; i < given.size(); ++i) {
        data.push_back(AcceptedValueOf(i, given[i] != nullptr ? *given[i] : kNothing));
    }
    return data;
}

std::optional<ByteString> RowInsert::AcceptedValueOf(std::size_t ordinal, const Variant& value) const {
    const StoredColumn& stored = table_.stored[ordinal];
    if (stored.autoNumber && (value.IsNull() || value.IsEmpty())) {
        return NextAutoValue(table_.columns[ordinal], counters_);
    }
    return AcceptedValue(table_.columns[ordinal], stored, value);
}

// Short long values stay in the row unless it grows too long with them. Those that go outside have an empty
// descriptor for now, of the length that the real one will have.
RowFields RowInsert::FieldsFor(const RowFields& data) const {
    RowFields fields = data;
    for (const std::size_t longestInline : {long_value::kLargestInline, std::size_t{0}}) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (table_.stored[i].IsLong() && data[i]) {
                fields[i] = data[i]->size() <= longestInline ? InlineLongValue(*data[i])
                                                             : ByteString(long_value::kDescriptor);
            }
        }
        if (BuildRow(table_, fields, {}).size() <= kLargestRow) {
            return fields;
        }
    }
    throw basic::RuntimeError(basic::error::kRecordTooLarge);
}

void RowInsert::StoreLongValues(const RowFields& data, RowFields& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (table_.stored[i].IsLong() && fields[i] && LiesOutside(*fields[i])) {
            fields[i] = longValues_.StoreOutside(table_.stored[i], *data[i]);
        }
    }
}

void RowInsert::NoteAutoNumbers(const RowFields& data) {
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (table_.stored[i].autoNumber && table_.stored[i].type == ColumnType::Long &&
            !IsRandomAutoNumber(table_.columns[i])) {
            counters_.UseAutoNumber(ByteView(*data[i], table_.page).I32(0));
        }
    }
}

}  // namespace quardele::jet
