// Memos and OLE data: a descriptor in the row, the data in it or on pages of their own.
#pragma once

#include <vector>

#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

/// The descriptor at the start of a Memo or OLE field.
struct LongValueDescriptor {
    std::uint32_t form = 0;  ///< kInline, kSingle or 0 for a chain
    std::size_t length = 0;  ///< of the data, in bytes
    RowPointer first;        ///< the first piece; none when inline

    /// Throws 3343 when the field is shorter than a descriptor.
    static LongValueDescriptor Load(const ByteView& field);
};

/// All data of a long value. Throws 3343 when pieces are missing, too short or go in a circle, 3197 when the
/// value was replaced since its row was read.
[[nodiscard]] std::vector<std::uint8_t> ReadLongValue(const PageSource& pages, const ByteView& field);

/// The places of the pieces of a value that is not inline.
[[nodiscard]] std::vector<RowPointer> PiecesOf(const PageSource& pages, const LongValueDescriptor& value);

}  // namespace quardele::jet
