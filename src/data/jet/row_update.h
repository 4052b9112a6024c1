// Changing one row within a transaction: its bytes, its long values, its index entries.
#pragma once

#include <span>

#include <jet/table.h>

#include "index_update.h"
#include "long_value_writer.h"
#include "page_allocator.h"
#include "row_builder.h"
#include "transaction.h"

namespace quardele::jet {

class RowUpdate {
 public:
    RowUpdate(Transaction& pages, const TableDef& table);

    /// Throws as Table::Update says; then the transaction must be dropped.
    void Run(RowId id, std::span<const ColumnChange> changes);

 private:
    /// Where the bytes of the row lie: in its own slot, or where that points.
    struct Place {
        RowPointer data;
        bool moved = false;
    };

    [[nodiscard]] Place Find(RowId id) const;

    void Apply(const ColumnChange& change, RowFields& fields);
    void MoveLongValuesOut(std::span<const ColumnChange> changes, RowFields& fields);

    void StoreRow(RowId id, const Place& place, const ByteString& row);
    void MoveRow(RowId id, const Place& place, const ByteString& row);
    [[nodiscard]] RowPointer AddMoved(const ByteString& row);
    void KeepFreeMap(std::uint32_t page, const DataPageEditor& editor);

    Transaction& pages_;
    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
};

}  // namespace quardele::jet
