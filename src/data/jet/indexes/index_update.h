// Keeping the indexes of a table in step with a row that changes.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <jet/table.h>

#include "definitions/table_counters.h"
#include "indexes/index_tree.h"
#include "indexes/row_key.h"
#include "rows/row_draft.h"

namespace quardele::jet {

/// By the position of the real index in the table's definition.
using IndexKeys = std::vector<std::optional<RowKey>>;

class IndexUpdate {
 public:
    IndexUpdate(Transaction& pages, PageAllocator& allocator, const TableDef& table)
        : pages_(pages), allocator_(allocator), table_(table), counters_(pages, table.page) {}

    /// The key of a row in one index.
    [[nodiscard]] RowKey KeyIn(const RealIndex& index, const RowDraft& row) const;
    /// The keys of a row, one for each real index.
    [[nodiscard]] IndexKeys KeysOf(const RowDraft& row) const;
    /// The same, but none for an index that the changes do not concern.
    [[nodiscard]] IndexKeys KeysOf(const RowDraft& row, std::span<const ColumnChange> changes) const;

    /// Throws 3058 for a Null that an index forbids, 3022 for a duplicate, 3251 for an entry that is not ours
    /// to make.
    void CheckNew(const IndexKeys& keys);
    /// Enters a new row, which CheckNew has let pass.
    void Add(RowId row, const IndexKeys& keys);
    void Remove(RowId row, const IndexKeys& keys);
    /// Throws like CheckNew.
    void CheckReplace(RowId row, const IndexKeys& before, const IndexKeys& after);
    /// Replaces the entries of a row, after CheckReplace.
    void Replace(RowId row, const IndexKeys& before, const IndexKeys& after);

 private:
    [[nodiscard]] IndexTree Tree(std::size_t position);
    void AddIn(std::size_t position, RowId row, const RowKey& key);
    void RemoveIn(std::size_t position, RowId row, const RowKey& key);

    Transaction& pages_;
    PageAllocator& allocator_;
    const TableDef& table_;
    TableCounters counters_;
    std::vector<std::optional<IndexSpot>> spots_;  ///< where CheckNew found the new keys missing
};

}  // namespace quardele::jet
