// Taking pages of the file into use and giving them back.
#pragma once

#include "commit/transaction.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// Keeps the map of free pages, and the maps that say what each page is used for.
class PageAllocator {
 public:
    explicit PageAllocator(Transaction& pages) : pages_(pages) {}

    /// A page for a new use, all zeros: the lowest free one, or a new one at the end of the file.
    [[nodiscard]] Page& Allocate();
    /// Gives a page back. Its owner's maps are the caller's.
    void Free(std::uint32_t page);

    /// Adds a page to a map, which grows as it must. Throws 3251 when the file has no such map.
    void AddToMap(RowPointer map, std::uint32_t page);
    void RemoveFromMap(RowPointer map, std::uint32_t page);

 private:
    [[nodiscard]] Page& Extend();
    void MarkUsed(std::uint32_t page);
    void GrowFreeMap(std::uint32_t page);
    void GrowMap(RowPointer map, std::uint32_t page);
    [[nodiscard]] bool TryStoreInline(RowPointer map, std::span<const std::uint32_t> members,
                                      std::size_t length);
    void StoreEmptyReference(RowPointer map);
    void StoreReferenced(RowPointer map, std::span<const std::uint32_t> members);
    void AddBlock(RowPointer map, std::size_t block, std::uint32_t bitmapPage);

    Transaction& pages_;
};

}  // namespace quardele::jet
