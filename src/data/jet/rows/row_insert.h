// Adding one row within a transaction: its bytes, its long values, its index entries.
#pragma once

#include <span>

#include <jet/table.h>

#include "definitions/relations.h"
#include "definitions/table_counters.h"
#include "rows/long_value_writer.h"
#include "rows/row_store.h"

namespace quardele::jet {

class RowInsert {
 public:
    /// `table` must be the definition as the transaction shows it, counters apart.
    RowInsert(Transaction& pages, const TableDef& table);

    /// Throws as Table::Insert says. What the rules refuse is found before anything is changed; after another
    /// error the part of the transaction must be undone.
    RowId Run(std::span<const ColumnChange> values);

 private:
    [[nodiscard]] RowDraft Drafted(std::span<const ColumnChange> values) const;
    [[nodiscard]] std::optional<ByteString> AcceptedValueOf(std::size_t ordinal, const Variant& value) const;
    void NoteAutoNumbers(const RowDraft& row);

    const TableDef& table_;
    PageAllocator allocator_;
    LongValueWriter longValues_;
    IndexUpdate indexes_;
    Relations relations_;
    RowStore rows_;
    TableCounters counters_;
};

}  // namespace quardele::jet
