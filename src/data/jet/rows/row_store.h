// The bytes of a table's rows within a transaction.
#pragma once

#include "definitions/table_def.h"
#include "pages/row_pages.h"

namespace quardele::jet {

/// Where the bytes of a row lie: in its own slot, or where that points.
struct RowPlace {
    RowPointer data;
    bool moved = false;
};

class RowStore {
 public:
    RowStore(Transaction& pages, PageAllocator& allocator, const TableDef& table);

    /// Throws 3167 when the row was deleted, 3343 when the identity points at no row of the table.
    [[nodiscard]] RowPlace Find(RowId id) const;
    [[nodiscard]] bool IsDeleted(RowId id) const;
    [[nodiscard]] RowId Add(const ByteString& row) { return rows_.Add(0, row); }
    /// Stores the new bytes in place, or elsewhere with a pointer in the row's own slot.
    void Replace(RowId id, const RowPlace& place, const ByteString& row);
    void Delete(RowId id, const RowPlace& place);

 private:
    Transaction& pages_;
    std::uint32_t table_;
    RowPages rows_;
};

}  // namespace quardele::jet
