// Sets of page numbers, stored as rows of map pages.
#pragma once

#include <vector>

#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// The pages of a map in ascending order. A map without a page, an empty or a deleted map row is the empty
/// set. Pages behind the end of the file are left out: only the map of free pages names such.
[[nodiscard]] std::vector<std::uint32_t> ReadUsageMap(const PageSource& pages, RowPointer map);

/// The pages that the bits of a map lie on, other than the page of the map itself: those of a map that has
/// outgrown its row.
[[nodiscard]] std::vector<std::uint32_t> BitmapPages(const PageSource& pages, RowPointer map);

}  // namespace quardele::jet
