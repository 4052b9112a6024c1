#include "structure/index_filling.h"

#include <basic/runtime_error.h>

#include "definitions/table_counters.h"
#include "indexes/index_node.h"
#include "indexes/row_key.h"
#include "structure/index_build.h"

namespace quardele::jet {

namespace {

RowKey KeyOf(const TableImpl& table, const RealIndex& index, const Row& row) {
    const TableDef& def = table.Def();
    const RowLayout layout({row.Bytes(), row.Id().page}, def, table.Layout());
    std::vector<std::optional<ByteString>> values;
    for (const IndexColumn& part : index.columns) {
        values.push_back(
            ColumnData(table.Pages(), def.stored[static_cast<std::size_t>(part.column)], layout));
    }
    return MakeKey(def, index, table.Layout(), values);
}

void CheckKey(const RealIndex& index, const RowKey& key) {
    if (index.required && key.anyNull) {
        throw basic::RuntimeError(basic::error::kNullInPrimaryKey);
    }
    if (!key.known) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"L'ordre d'un texte dans l'index n'est pas connu ; l'index ne peut pas être créé.");
    }
    if (key.bytes.size() + kEntryRow > kLargestEntry) {
        throw basic::RuntimeError(basic::error::kOperationNotSupported,
                                  u"Une valeur est trop longue pour être indexée.");
    }
}

// Keys of nothing but Nulls are no duplicates of each other.
void CheckDuplicates(const IndexEntries& entries, std::size_t nulls) {
    std::size_t duplicates = 0;
    for (std::size_t i = 1; i < entries.Size(); ++i) {
        duplicates += CompareBytes(entries.KeyAt(i - 1), entries.KeyAt(i)) == 0 ? 1 : 0;
    }
    if (duplicates > (nulls > 1 ? nulls - 1 : 0)) {
        throw basic::RuntimeError(basic::error::kDuplicateKey);
    }
}

}  // namespace

IndexEntries EntriesOf(const TableImpl& table, const RealIndex& index) {
    IndexEntries entries;
    std::size_t nulls = 0;
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        const RowKey key = KeyOf(table, index, *row);
        CheckKey(index, key);
        if (!(index.ignoreNulls && key.allNull)) {
            entries.Add(key.bytes, row->Id());
            nulls += key.allNull ? 1 : 0;
        }
    }
    entries.Sort();
    if (index.unique) {
        CheckDuplicates(entries, nulls);
    }
    return entries;
}

void FillIndex(Transaction& pages, PageAllocator& allocator, const TableDef& table, std::size_t realIndex,
               const IndexEntries& entries) {
    BuildIndex(pages, allocator, table.page, table.realIndexes[realIndex], entries);
    TableCounters(pages, table.page).AddDistinctKeys(realIndex, static_cast<int>(entries.DistinctKeys()));
}

}  // namespace quardele::jet
