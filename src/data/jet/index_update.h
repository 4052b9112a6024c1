// Keeping the indexes of a table in step with a row that changes.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <jet/table.h>

#include "index_tree.h"
#include "row_builder.h"
#include "row_key.h"

namespace quardele::jet {

/// By the position of the real index in the table's definition.
using IndexKeys = std::vector<std::optional<RowKey>>;

class IndexUpdate {
 public:
    IndexUpdate(Transaction& pages, PageAllocator& allocator, const TableDef& table)
        : pages_(pages), allocator_(allocator), table_(table) {}

    /// The keys that a row with these fields has, one for each real index; none for an index that the changes
    /// do not concern.
    [[nodiscard]] IndexKeys Keys(const RowFields& fields, std::span<const ColumnChange> changes) const;

    /// Replaces the entries of a row. Throws 3058 for a Null that an index forbids, 3022 for a duplicate,
    /// 3251 for an entry that is not ours to make.
    void Replace(RowId row, const IndexKeys& before, const IndexKeys& after);

 private:
    [[nodiscard]] RowKey KeyIn(const RealIndex& index, const RowFields& fields) const;
    void ReplaceIn(std::size_t position, RowId row, const RowKey& before, const RowKey& after);
    void CountDistinct(std::size_t position, int change);

    Transaction& pages_;
    PageAllocator& allocator_;
    const TableDef& table_;
};

}  // namespace quardele::jet
