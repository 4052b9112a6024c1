// Building an index tree from all of its entries at once.
#pragma once

#include "definitions/table_def.h"
#include "pages/page_allocator.h"
#include "structure/index_entries.h"

namespace quardele::jet {

/// Fills an index whose root is an empty leaf, level by level from the leaves upwards; each page but the last
/// ones gets nine tenths full, so that rows to come find room. The entries are sorted.
void BuildIndex(Transaction& pages, PageAllocator& allocator, std::uint32_t table, const RealIndex& index,
                const IndexEntries& entries);

}  // namespace quardele::jet
