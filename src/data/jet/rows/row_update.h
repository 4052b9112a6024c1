// Changing one row within a transaction: its bytes, its long values, its index entries.
#pragma once

#include <span>

#include <jet/table.h>

#include "definitions/relations.h"
#include "rows/long_value_writer.h"
#include "rows/row_store.h"

namespace quardele::jet {

class RowUpdate {
 public:
    RowUpdate(Transaction& pages, const TableDef& table);

    /// Throws as Table::Update says. What the rules refuse is found before anything is changed; after another
    /// error the part of the transaction must be undone.
    void Run(RowId id, std::span<const ColumnChange> changes);

 private:
    /// The field of a long value that gets another one.
    struct OldValue {
        const StoredColumn* column;
        ByteString field;
    };

    [[nodiscard]] RowDraft Stored(const RowPlace& place) const;
    /// Puts the new values into the row and gives the long values that they replace.
    [[nodiscard]] std::vector<OldValue> Give(std::span<const ColumnChange> changes, RowDraft& row) const;

    [[nodiscard]] Variant ValueOf(const RowDraft& row, int column) const;
    /// Gives the rows that refer to this one its new key.
    void TellChildren(const RowDraft& row, const IndexKeys& before, const IndexKeys& after);

    Transaction& pages_;
    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
    Relations relations_;
    RowStore rows_;
};

}  // namespace quardele::jet
