// Changing single bits of a usage map where it has room for them.
#pragma once

#include <optional>

#include "commit/transaction.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// Sets the bit of a page; false when the map does not reach so far. A map without a page reaches nowhere.
[[nodiscard]] bool TrySetMapBit(Transaction& pages, RowPointer map, std::uint32_t page, bool value);

/// Whether a map lists a page.
[[nodiscard]] bool IsInMap(const PageSource& pages, RowPointer map, std::uint32_t page);

/// The lowest page of the map of free pages within the file, from `from` on; none when there is none.
[[nodiscard]] std::optional<std::uint32_t> LowestInMap(const PageSource& pages, RowPointer map,
                                                       std::uint32_t from);

}  // namespace quardele::jet
