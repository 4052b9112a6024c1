// New usage maps: rows of pages that hold nothing but maps.
#pragma once

#include "pages/page_allocator.h"

namespace quardele::jet {

/// Hands out empty maps. Each page is filled before the next one is taken.
class MapRows {
 public:
    /// `firstPage` is a page of maps to go on with; without it the first map takes a new one.
    MapRows(Transaction& pages, PageAllocator& allocator, std::uint32_t firstPage = 0)
        : pages_(pages), allocator_(allocator), page_(firstPage) {}

    [[nodiscard]] RowPointer Add();

 private:
    [[nodiscard]] std::optional<RowPointer> AddTo(std::uint32_t page);

    Transaction& pages_;
    PageAllocator& allocator_;
    std::uint32_t page_;
};

/// Takes maps away that nobody uses any more. Each page of maps goes when its last map is gone.
void RemoveMapRows(Transaction& pages, PageAllocator& allocator, std::vector<RowPointer> maps);

}  // namespace quardele::jet
