// Writing a table definition to its pages.
#pragma once

#include "pages/page_allocator.h"

namespace quardele::jet {

/// Cuts a definition into pages. The first one keeps its number, which is the table's identity; pages behind
/// it are taken or given back as the length asks for.
void StoreDefinition(Transaction& pages, PageAllocator& allocator, std::uint32_t first,
                     const ByteString& definition);

/// The pages of a definition behind the first one.
[[nodiscard]] std::vector<std::uint32_t> ContinuationPages(const PageSource& pages, std::uint32_t first);

}  // namespace quardele::jet
