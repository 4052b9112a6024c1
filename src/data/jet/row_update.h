// Changing one row within a transaction: its bytes, its long values, its index entries.
#pragma once

#include <span>

#include <jet/table.h>

#include "index_update.h"
#include "long_value_writer.h"
#include "row_store.h"

namespace quardele::jet {

class RowUpdate {
 public:
    RowUpdate(Transaction& pages, const TableDef& table);

    /// Throws as Table::Update says; then the transaction must be dropped.
    void Run(RowId id, std::span<const ColumnChange> changes);

 private:
    void Apply(const ColumnChange& change, RowFields& fields);
    void MoveLongValuesOut(std::span<const ColumnChange> changes, RowFields& fields);

    Transaction& pages_;
    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
    RowStore rows_;
};

}  // namespace quardele::jet
