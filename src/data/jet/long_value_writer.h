// Storing long values and giving their room back.
#pragma once

#include "data_page_editor.h"
#include "page_allocator.h"
#include "table_def.h"

namespace quardele::jet {

class LongValueWriter {
 public:
    LongValueWriter(Transaction& pages, PageAllocator& allocator) : pages_(pages), allocator_(allocator) {}

    /// Stores data in the form that their length asks for, and gives the field for the row.
    [[nodiscard]] ByteString Store(const StoredColumn& column, const ByteString& data);
    /// Stores data outside of the row, however short.
    [[nodiscard]] ByteString StoreOutside(const StoredColumn& column, const ByteString& data);
    /// Gives back the pieces of a value that no row names any more.
    void Remove(const StoredColumn& column, const ByteView& field);

 private:
    [[nodiscard]] RowPointer AddPiece(const StoredColumn& column, ByteString piece);
    [[nodiscard]] std::optional<RowPointer> AddToPageWithRoom(const StoredColumn& column,
                                                              const ByteString& piece);
    void KeepFreeMap(const StoredColumn& column, std::uint32_t page, const DataPageEditor& editor);

    Transaction& pages_;
    PageAllocator& allocator_;
};

}  // namespace quardele::jet
