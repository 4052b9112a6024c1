// Storing long values and giving their room back.
#pragma once

#include "definitions/table_def.h"
#include "pages/row_pages.h"

namespace quardele::jet {

/// The field of a row for data that stay in the row.
[[nodiscard]] ByteString InlineLongValue(const ByteString& data);

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
    [[nodiscard]] RowPages PagesOf(const StoredColumn& column) const;

    Transaction& pages_;
    PageAllocator& allocator_;
};

}  // namespace quardele::jet
