// Deleting one row within a transaction, with its long values and index entries.
#pragma once

#include <jet/table.h>

#include "index_update.h"
#include "long_value_writer.h"
#include "row_store.h"
#include "table_counters.h"

namespace quardele::jet {

class RowDelete {
 public:
    /// `table` must be the definition as the transaction shows it, counters apart.
    RowDelete(Transaction& pages, const TableDef& table);

    /// Throws as Table::Delete says. What the rules refuse is found before anything is changed; after another
    /// error the part of the transaction must be undone.
    void Run(RowId id);

 private:
    Transaction& pages_;
    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
    RowStore rows_;
    TableCounters counters_;
};

}  // namespace quardele::jet
