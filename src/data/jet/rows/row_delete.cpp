#include "rows/row_delete.h"

#include <map>

#include "rows/row_update.h"

namespace quardele::jet {

namespace {

// The columns that refer to a row which is gone become Null.
void ClearReference(Transaction& pages, const Partner& partner, RowId child) {
    std::vector<ColumnChange> changes;
    for (const IndexColumn& part : partner.Index().columns) {
        changes.push_back({part.column, basic::Null{}});
    }
    RowUpdate(pages, partner.Table()).Run(child, changes);
}

}  // namespace

RowDelete::RowDelete(Transaction& pages, const TableDef& table)
    : pages_(pages),
      table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      relations_(pages, table),
      rows_(pages, allocator_, table),
      counters_(pages, table.page) {}

void RowDelete::Run(RowId id) {
    if (relations_.HasChildren()) {
        pages_.AsPart([&] { DeleteWithChildren(id); });
    } else {
        DeleteAlone(id);
    }
}

// A list instead of a recursion: rows may refer to one another in long chains.
void RowDelete::DeleteWithChildren(RowId id) {
    struct Doomed {
        std::uint32_t table;
        RowId row;
    };
    std::vector<Doomed> doomed = {{table_.page, id}};
    std::map<std::uint32_t, TableDef> tables = {{table_.page, table_}};
    while (!doomed.empty()) {
        const auto [page, row] = doomed.back();
        doomed.pop_back();
        RowDelete one(pages_, tables.at(page));
        if (row != id && one.rows_.IsDeleted(row)) {
            continue;  // it referred to two of them
        }
        const IndexKeys keys = one.DeleteAlone(row);
        const IndexKeys none(keys.size());
        one.relations_.ForChildrenOf(
            keys, none,
            [&](const Relation& relation, const Partner& partner, const std::vector<RowId>& rows) {
                if (relation.onDelete == Relation::OnDelete::Refuse) {
                    ThrowHasChildren();
                }
                tables.try_emplace(relation.table, partner.Table());
                for (const RowId child : rows) {
                    pages_.LockRow(child);
                    if (relation.onDelete == Relation::OnDelete::Cascade) {
                        doomed.push_back({relation.table, child});
                    } else {
                        ClearReference(pages_, partner, child);
                    }
                }
            });
    }
}

IndexKeys RowDelete::DeleteAlone(RowId id) {
    const RowPlace place = rows_.Find(id);
    const RowBytes stored = ReadRow(pages_, place.data);
    ByteString fixedArea;
    RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    const RowDraft row(table_, std::move(fields), std::move(fixedArea));
    const IndexKeys keys = indexes_.KeysOf(row);
    indexes_.Remove(id, keys);
    for (std::size_t i = 0; i < table_.stored.size(); ++i) {
        if (table_.stored[i].IsLong() && row.At(i)) {
            longValues_.Remove(table_.stored[i], {*row.At(i), table_.page});
        }
    }
    rows_.Delete(id, place);
    counters_.AddRows(-1);
    return keys;
}

}  // namespace quardele::jet
