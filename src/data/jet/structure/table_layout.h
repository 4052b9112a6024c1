// Giving a table that is being made its pages.
#pragma once

#include "definitions/definition_parts.h"
#include "structure/map_rows.h"

namespace quardele::jet {

/// Gives a definition its maps and the trees of its indexes, all empty, and writes it. `page` is an allocated
/// page, the table's identity from now on.
void LayOutTable(Transaction& pages, PageAllocator& allocator, MapRows& maps, std::uint32_t page,
                 DefinitionParts parts);

/// Gives a real index its map and an empty root, and writes both into its descriptor.
void LayOutIndex(Transaction& pages, PageAllocator& allocator, MapRows& maps, std::uint32_t table,
                 std::span<std::uint8_t> descriptor);

/// The record of a Memo or OLE column's maps, which are made.
[[nodiscard]] ByteString NewLongValueMaps(MapRows& maps, std::uint16_t column);

}  // namespace quardele::jet
