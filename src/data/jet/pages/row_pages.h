// The pages on which one owner keeps its rows: a table its data, a column its long values.
#pragma once

#include "pages/data_page_editor.h"
#include "pages/page_allocator.h"

namespace quardele::jet {

/// Who owns rows, and the maps of the pages that hold them.
struct RowOwner {
    std::uint32_t owner = 0;  ///< as the pages name it
    RowPointer ownedMap;
    RowPointer freeMap;
    /// Pages without a live row are given back. A table keeps them, so that what remembers one of its deleted
    /// rows still finds that it was deleted.
    bool givesEmptyPagesBack = false;
};

class RowPages {
 public:
    RowPages(Transaction& pages, PageAllocator& allocator, const RowOwner& owner)
        : pages_(pages), allocator_(allocator), owner_(owner) {}

    /// Adds a row on a page with room, or on a new one. The row must not be longer than a page can hold.
    [[nodiscard]] RowPointer Add(std::uint16_t flags, const ByteString& row);
    /// Gives a row new bytes and flags; false when its page has no room for them.
    [[nodiscard]] bool TryReplace(RowPointer place, std::uint16_t flags, const ByteString& row);
    void Delete(RowPointer place);

 private:
    [[nodiscard]] std::optional<RowPointer> TryAdd(std::uint32_t page, std::uint16_t flags,
                                                   const ByteString& row);
    [[nodiscard]] std::optional<std::uint32_t> PageWithRoom(std::size_t length);
    [[nodiscard]] bool MayHold(std::uint32_t page, std::size_t length) const;
    [[nodiscard]] RoomMemory::Owner& Memory();
    [[nodiscard]] DataPageEditor Open(std::uint32_t page) const;
    void Save(std::uint32_t page, DataPageEditor& editor);

    Transaction& pages_;
    PageAllocator& allocator_;
    RowOwner owner_;
};

}  // namespace quardele::jet
