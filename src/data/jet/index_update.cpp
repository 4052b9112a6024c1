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

void CheckOurs(const RealIndex& index, const RowKey& key) {
    if (index.related) {
        // The other table would have to agree or to follow.
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"Ce champ lie deux tables par une relation ; il ne peut pas changer ici.");
    }
    if (!key.known) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"L'ordre de ce texte dans l'index n'est pas connu ; le champ ne peut pas changer.");
    }
}

void CheckNulls(const RealIndex& index, const RowKey& key) {
    if (index.required && key.anyNull) {
        throw basic::RuntimeError(basic::error::kNullInPrimaryKey);
    }
}

}  // namespace

RowKey IndexUpdate::KeyIn(const RealIndex& index, const RowFields& fields, bool stored) const {
    std::vector<std::optional<ByteString>> values;
    for (const IndexColumn& part : index.columns) {
        const auto ordinal = static_cast<std::size_t>(part.column);
        const auto& field = fields[ordinal];
        if (field && stored && table_.stored[ordinal].IsLong()) {
            values.emplace_back(ReadLongValue(pages_, {*field, table_.page}));
        } else {
            values.push_back(field);
        }
    }
    RowKey key = MakeKey(table_, index, pages_.Layout(), values);
    key.known = key.known && index.seekable;
    return key;
}

IndexKeys IndexUpdate::KeysOf(const RowFields& fields) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        keys.emplace_back(KeyIn(index, fields, true));
    }
    return keys;
}

IndexKeys IndexUpdate::KeysOf(const RowFields& fields, std::span<const ColumnChange> changes) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        const bool concerned =
            std::any_of(changes.begin(), changes.end(), [&index](const ColumnChange& change) {
                return std::any_of(
                    index.columns.begin(), index.columns.end(),
                    [&change](const IndexColumn& part) { return part.column == change.column; });
            });
        keys.push_back(concerned ? std::optional(KeyIn(index, fields, true)) : std::nullopt);
    }
    return keys;
}

IndexKeys IndexUpdate::KeysOfData(const RowFields& data) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        keys.emplace_back(KeyIn(index, data, false));
    }
    return keys;
}

void IndexUpdate::CheckNew(const IndexKeys& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const RealIndex& index = table_.realIndexes[i];
        const RowKey& key = *keys[i];
        CheckNulls(index, key);
        CheckOurs(index, key);
        IndexTree::CheckLength(key.bytes.size() + kEntryRow);
        if (index.unique && !key.allNull && Tree(i).HasKey(key.bytes)) {
            throw basic::RuntimeError(basic::error::kDuplicateKey);
        }
    }
}

void IndexUpdate::CheckOld(const IndexKeys& keys) const {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        CheckOurs(table_.realIndexes[i], *keys[i]);
    }
}

void IndexUpdate::Add(RowId row, const IndexKeys& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        AddIn(i, row, *keys[i]);
    }
}

void IndexUpdate::Remove(RowId row, const IndexKeys& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        RemoveIn(i, row, *keys[i]);
    }
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
    CheckNulls(index, after);
    if (before.bytes == after.bytes) {
        return;
    }
    CheckOurs(index, before);
    CheckOurs(index, after);
    if (index.unique && !after.allNull && Tree(position).HasKeyOfOther(after.bytes, row)) {
        throw basic::RuntimeError(basic::error::kDuplicateKey);
    }
    RemoveIn(position, row, before);
    AddIn(position, row, after);
}

IndexTree IndexUpdate::Tree(std::size_t position) {
    return {pages_, allocator_, table_.page, table_.realIndexes[position]};
}

void IndexUpdate::AddIn(std::size_t position, RowId row, const RowKey& key) {
    if (HasEntry(table_.realIndexes[position], key)) {
        IndexTree tree = Tree(position);
        counters_.AddDistinctKeys(position, tree.HasKey(key.bytes) ? 0 : 1);
        tree.Insert(Entry(key, row));
    }
}

void IndexUpdate::RemoveIn(std::size_t position, RowId row, const RowKey& key) {
    if (HasEntry(table_.realIndexes[position], key)) {
        IndexTree tree = Tree(position);
        tree.Remove(Entry(key, row));
        counters_.AddDistinctKeys(position, tree.HasKey(key.bytes) ? 0 : -1);
    }
}

}  // namespace quardele::jet
