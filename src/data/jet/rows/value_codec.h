// Values of columns, between their stored bytes and the program's Variant. Long values come as their data,
// without the descriptor.
#pragma once

#include <vector>

#include <basic/variant.h>

#include "bytes.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// Whether the bytes are none where the type has a fixed size: the value is Null then.
[[nodiscard]] inline bool IsMissing(const StoredColumn& column, const ByteView& bytes) {
    return bytes.IsEmpty() && NaturalSize(column.type).has_value();
}

/// Throws 3343 when the type has a fixed size that the bytes have not.
inline void CheckSize(const StoredColumn& column, const ByteView& bytes) {
    const auto size = NaturalSize(column.type);
    if (size && bytes.Size() != *size) {
        ThrowDamaged(bytes.Page(), u"valeur de longueur impossible");
    }
}

/// The value that stored bytes mean; Null when a fixed-size value is stored with length 0. Not for Boolean,
/// which has no bytes. Throws 3343 when the bytes do not fit the type.
[[nodiscard]] basic::Variant DecodeValue(const StoredColumn& column, const ByteView& bytes,
                                         const Format& format);

/// A numeric or date value as a double, with the same checks; 0 for other types.
[[nodiscard]] double DecodeNumber(const StoredColumn& column, const ByteView& bytes);

}  // namespace quardele::jet
