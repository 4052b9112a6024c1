#include "row_delete.h"

namespace quardele::jet {

RowDelete::RowDelete(Transaction& pages, const TableDef& table)
    : pages_(pages),
      table_(table),
      allocator_(pages),
      longValues_(pages, allocator_),
      indexes_(pages, allocator_, table),
      rows_(pages, allocator_, table),
      counters_(pages, table.page) {}

void RowDelete::Run(RowId id) {
    const RowPlace place = rows_.Find(id);
    const RowBytes stored = ReadRow(pages_, place.data);
    ByteString fixedArea;
    RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    const RowDraft row(table_, std::move(fields), std::move(fixedArea));
    const IndexKeys keys = indexes_.KeysOf(row);
    indexes_.CheckOld(keys);
    indexes_.Remove(id, keys);
    for (std::size_t i = 0; i < table_.stored.size(); ++i) {
        if (table_.stored[i].IsLong() && row.At(i)) {
            longValues_.Remove(table_.stored[i], {*row.At(i), table_.page});
        }
    }
    rows_.Delete(id, place);
    counters_.AddRows(-1);
}

}  // namespace quardele::jet
