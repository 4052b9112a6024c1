#include "indexes/index_update.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "rows/long_value.h"

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

void CheckKnown(const RowKey& key) {
    if (!key.known) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"L'ordre de ce texte dans l'index n'est pas connu ; il ne peut pas y être enregistré.");
    }
}

void CheckNulls(const RealIndex& index, const RowKey& key) {
    if (index.required && key.anyNull) {
        throw basic::RuntimeError(basic::error::kNullInPrimaryKey);
    }
}

}  // namespace

RowKey IndexUpdate::KeyIn(const RealIndex& index, const RowDraft& row) const {
    std::vector<std::optional<ByteView>> values;
    std::vector<ByteString> read;  // what the views of memos refer to
    read.reserve(index.columns.size());
    for (const IndexColumn& part : index.columns) {
        const auto ordinal = static_cast<std::size_t>(part.column);
        const auto& field = row.At(ordinal);
        if (!field) {
            values.emplace_back();
        } else if (table_.stored[ordinal].IsLong() && !row.IsGiven(ordinal)) {
            values.emplace_back(
                ByteView(read.emplace_back(ReadLongValue(pages_, {*field, table_.page})), table_.page));
        } else {
            values.emplace_back(ByteView(*field, table_.page));
        }
    }
    RowKey key = MakeKey(table_, index, pages_.Layout(), std::span<const std::optional<ByteView>>(values));
    key.known = key.known && index.seekable;
    if (!key.known) {
        // What is equal in one order need not be in another.
        for (const auto& value : values) {
            key.bytes.push_back(value ? 1 : 0);
            if (value) {
                key.bytes.insert(key.bytes.end(), value->Span().begin(), value->Span().end());
            }
        }
    }
    return key;
}

IndexKeys IndexUpdate::KeysOf(const RowDraft& row) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        keys.emplace_back(KeyIn(index, row));
    }
    return keys;
}

IndexKeys IndexUpdate::KeysOf(const RowDraft& row, std::span<const ColumnChange> changes) const {
    IndexKeys keys;
    for (const RealIndex& index : table_.realIndexes) {
        const bool concerned =
            std::any_of(changes.begin(), changes.end(), [&index](const ColumnChange& change) {
                return std::any_of(
                    index.columns.begin(), index.columns.end(),
                    [&change](const IndexColumn& part) { return part.column == change.column; });
            });
        keys.push_back(concerned ? std::optional(KeyIn(index, row)) : std::nullopt);
    }
    return keys;
}

void IndexUpdate::CheckNew(const IndexKeys& keys) {
    spots_.assign(keys.size(), std::nullopt);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const RealIndex& index = table_.realIndexes[i];
        const RowKey& key = *keys[i];
        CheckNulls(index, key);
        CheckKnown(key);
        IndexTree::CheckLength(key.bytes.size() + kEntryRow);
        if (index.unique && !key.allNull) {
            spots_[i] = Tree(i).SpotOfNew(key.bytes);
            if (!spots_[i]) {
                throw basic::RuntimeError(basic::error::kDuplicateKey);
            }
        }
    }
}

void IndexUpdate::Add(RowId row, const IndexKeys& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (spots_[i]) {
            Tree(i).InsertAt(*spots_[i], Entry(*keys[i], row));
            counters_.AddDistinctKeys(i, 1);
        } else {
            AddIn(i, row, *keys[i]);
        }
    }
}

void IndexUpdate::Remove(RowId row, const IndexKeys& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        RemoveIn(i, row, *keys[i]);
    }
}

void IndexUpdate::CheckReplace(RowId row, const IndexKeys& before, const IndexKeys& after) {
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (!after[i]) {
            continue;
        }
        const RealIndex& index = table_.realIndexes[i];
        CheckNulls(index, *after[i]);
        if (before[i]->bytes == after[i]->bytes) {
            continue;
        }
        CheckKnown(*after[i]);
        IndexTree::CheckLength(after[i]->bytes.size() + kEntryRow);
        if (index.unique && !after[i]->allNull && Tree(i).HasKeyOfOther(after[i]->bytes, row)) {
            throw basic::RuntimeError(basic::error::kDuplicateKey);
        }
    }
}

void IndexUpdate::Replace(RowId row, const IndexKeys& before, const IndexKeys& after) {
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i] && before[i]->bytes != after[i]->bytes) {
            RemoveIn(i, row, *before[i]);
            AddIn(i, row, *after[i]);
        }
    }
}

IndexTree IndexUpdate::Tree(std::size_t position) {
    return {pages_, allocator_, table_.page, table_.realIndexes[position]};
}

void IndexUpdate::AddIn(std::size_t position, RowId row, const RowKey& key) {
    if (HasEntry(table_.realIndexes[position], key)) {
        counters_.AddDistinctKeys(position, Tree(position).Insert(Entry(key, row)) ? 1 : 0);
    }
}

// The entry of a key that is not ours to make is found by its row.
void IndexUpdate::RemoveIn(std::size_t position, RowId row, const RowKey& key) {
    if (HasEntry(table_.realIndexes[position], key)) {
        const bool onlyOne = Tree(position).Remove(key.known ? Entry(key, row) : Tree(position).EntryOf(row));
        counters_.AddDistinctKeys(position, onlyOne ? -1 : 0);
    }
}

}  // namespace quardele::jet
