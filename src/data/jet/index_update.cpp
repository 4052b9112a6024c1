#include "index_update.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "long_value.h"

namespace quardele::jet {

namespace {

[[nodiscard]] ByteString Entry(const RowKey& key, RowId row) {
    ByteString entry = key.bytes;
    for (const unsigned shift : {16u, 8u, 0u}) {
        entry.push_back(static_cast<std::uint8_t>(row.page >> shift & 0xFF));
    }
    entry.push_back(row.slot);
    return entry;
}

// Rows in which every indexed column is Null may be left out.
[[nodiscard]] bool HasEntry(const RealIndex& index, const RowKey& key) {
    return !(index.ignoreNulls && key.allNull);
}

}  // namespace

RowKey IndexUpdate::KeyIn(const RealIndex& index, const RowFields& fields) const {
    std::vector<std::optional<ByteString>> values;
    for (const IndexColumn& part : index.columns) {
        const auto ordinal = static_cast<std::size_t>(part.column);
        const auto& field = fields[ordinal];
        if (field && table_.stored[ordinal].IsLong()) {
            values.emplace_back(ReadLongValue(pages_, {*field, table_.page}));
        } else {
            values.push_back(field);
        }
    }
    RowKey key = MakeKey(table_, index, pages_.Layout(), values);
    key.known = key.known && index.seekable;
    return key;
}

IndexKeys IndexUpdate::Keys(const RowFields& fields, std::span<const ColumnChange> changes) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        const bool concerned =
            std::any_of(changes.begin(), changes.end(), [&index](const ColumnChange& change) {
                return std::any_of(
                    index.columns.begin(), index.columns.end(),
                    [&change](const IndexColumn& part) { return part.column == change.column; });
            });
        keys.push_back(concerned ? std::optional(KeyIn(index, fields)) : std::nullopt);
    }
    return keys;
}

void IndexUpdate::Replace(RowId row, const IndexKeys& before, const IndexKeys& after) {
    for (std::size_t i = 0; i < table_.realIndexes.size(); ++i) {
        if (before[i] && after[i]) {
            ReplaceIn(i, row, *before[i], *after[i]);
        }
    }
}

void IndexUpdate::ReplaceIn(std::size_t position, RowId row, const RowKey& before, const RowKey& after) {
    const RealIndex& index = table_.realIndexes[position];
    if (index.required && after.anyNull) {
        throw basic::RuntimeError(basic::error::kNullInPrimaryKey);
    }
    if (before.bytes == after.bytes) {
        return;
    }
    if (index.related) {
        // The other table would have to agree or to follow.
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"Ce champ lie deux tables par une relation ; il ne peut pas changer ici.");
    }
    if (!before.known || !after.known) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"L'ordre de ce texte dans l'index n'est pas connu ; le champ ne peut pas changer.");
    }
    IndexTree tree(pages_, allocator_, table_.page, index);
    if (index.unique && !after.allNull && tree.HasKeyOfOther(after.bytes, row)) {
        throw basic::RuntimeError(basic::error::kDuplicateKey);
    }
    if (HasEntry(index, before)) {
        tree.Remove(Entry(before, row));
        CountDistinct(position, tree.HasKey(before.bytes) ? 0 : -1);
    }
    if (HasEntry(index, after)) {
        CountDistinct(position, tree.HasKey(after.bytes) ? 0 : 1);
        tree.Insert(Entry(after, row));
    }
}

// The definition keeps the number of distinct keys, for the original engine's choice between indexes.
void IndexUpdate::CountDistinct(std::size_t position, int change) {
    const auto& at = pages_.Layout().def;
    const std::size_t place = at.end + position * at.indexStatistics + at.distinctKeys;
    const std::uint32_t count = pages_.Read(table_.page)->View().U32(place);
    if (change > 0 || (change < 0 && count > 0)) {
        StoreLittle(pages_.Write(table_.page).Mutable().subspan(place),
                    static_cast<std::uint32_t>(count + static_cast<std::uint32_t>(change)));
    }
}

}  // namespace quardele::jet
