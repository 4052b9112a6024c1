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
    const RowFields fields = SplitRow(stored.bytes, table_, pages_.Layout(), fixedArea);
    const IndexKeys keys = indexes_.KeysOf(fields);
    indexes_.CheckOld(keys);
    indexes_.Remove(id, keys);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (table_.stored[i].IsLong() && fields[i]) {
            longValues_.Remove(table_.stored[i], {*fields[i], table_.page});
        }
    }
    rows_.Delete(id, place);
    counters_.AddRows(-1);
}

}  // namespace quardele::jet
