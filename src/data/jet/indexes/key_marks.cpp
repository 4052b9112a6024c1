#include <jet/key_marks.h>

#include <functional>
#include <string_view>
#include <vector>

#include "indexes/row_key.h"
#include "table_impl.h"

namespace quardele::jet {

namespace {

/// The order of the texts in it must be known, to make its keys.
bool TellsRows(const Index& index) {
    return index.unique && index.seekable && !index.ignoreNulls;
}

std::optional<int> FindIndex(const std::vector<Index>& indexes) {
    std::optional<int> found;
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        if (TellsRows(indexes[i]) && (!found || indexes[i].primary)) {
            found = static_cast<int>(i);
        }
    }
    return found;
}

std::uint32_t MarkOf(std::span<const std::uint8_t> key) {
    const std::string_view bytes(reinterpret_cast<const char*>(key.data()), key.size());
    const auto mark = static_cast<std::uint32_t>(std::hash<std::string_view>()(bytes));
    return mark == KeyMarks::kNone ? mark + 1 : mark;
}

}  // namespace

KeyMarks::KeyMarks(const Table& table) : table_(table.Impl()), index_(FindIndex(table.Indexes())) {}

std::uint32_t KeyMarks::Of(const Row& row) const {
    if (!index_) {
        return kNone;
    }
    const TableDef& def = table_.Def();
    const RealIndex& index = def.realIndexes[def.realOf[static_cast<std::size_t>(*index_)]];
    const RowLayout layout(ByteView(row.Bytes(), row.Id().page), def, table_.Layout());
    return table_.Owner().Reading([&] {
        std::vector<std::optional<ByteString>> values;
        for (const IndexColumn& part : index.columns) {
            values.push_back(
                ColumnData(table_.Pages(), def.stored[static_cast<std::size_t>(part.column)], layout));
        }
        const RowKey key = MakeKey(def, index, table_.Layout(), values);
        return key.known ? MarkOf(key.bytes) : kNone;
    });
}

std::uint32_t KeyMarks::Of(const IndexCursor& entry, int index) const {
    return index_ == index ? MarkOf(entry.KeyBytes()) : kNone;
}

}  // namespace quardele::jet
