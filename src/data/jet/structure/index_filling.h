// The entries that the rows of a table have in an index.
#pragma once

#include "pages/page_allocator.h"
#include "structure/index_entries.h"
#include "table_impl.h"

namespace quardele::jet {

/// The entries of all rows, sorted. Throws 3022 for duplicates in a unique index, 3058 for a Null in a
/// required one, 3251 for a value that cannot be indexed.
[[nodiscard]] IndexEntries EntriesOf(const TableImpl& table, const RealIndex& index);

/// Builds an index that is still empty from its entries, and notes how many keys there are.
void FillIndex(Transaction& pages, PageAllocator& allocator, const TableDef& table, std::size_t realIndex,
               const IndexEntries& entries);

}  // namespace quardele::jet
