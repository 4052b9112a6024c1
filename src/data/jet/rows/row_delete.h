// Deleting one row within a transaction, with its long values and index entries.
#pragma once

#include <jet/table.h>

#include "definitions/relations.h"
#include "definitions/table_counters.h"
#include "rows/long_value_writer.h"
#include "rows/row_store.h"

namespace quardele::jet {

class RowDelete {
 public:
    /// `table` must be the definition as the transaction shows it, counters apart.
    RowDelete(Transaction& pages, const TableDef& table);

    /// Throws as Table::Delete says. What the rules refuse is found before anything is changed; after another
    /// error the part of the transaction must be undone.
    void Run(RowId id);

 private:
    /// Deletes the row and gives the keys that it had.
    IndexKeys DeleteAlone(RowId id);
    /// Deletes the row and, as the relationships ask for, those that refer to it.
    void DeleteWithChildren(RowId id);

    Transaction& pages_;
    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
    Relations relations_;
    RowStore rows_;
    TableCounters counters_;
};

}  // namespace quardele::jet
