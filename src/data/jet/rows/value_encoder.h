// From the program's Variant to the bytes that a column stores.
#pragma once

#include <basic/variant.h>

#include "bytes.h"
#include "definitions/table_def.h"

namespace quardele::jet {

/// The stored bytes of a value that is not Null; of a long value its data, without the descriptor. For
/// Boolean one byte, 0 or 1. Numbers are rounded to what the column can hold, texts are stored plain.
/// Throws RuntimeError 3421 when the value cannot become one of the column's type.
[[nodiscard]] ByteString EncodeValue(const StoredColumn& column, const basic::Variant& value);

/// A value that is not Null as a text. Throws 3421 when it cannot become one.
[[nodiscard]] Text TextOf(const basic::Variant& value);

/// A value to look for in an index: the nearest one that the column can hold, and where it lies.
struct SoughtValue {
    ByteString bytes;
    int side = 0;  ///< the nearest value is smaller (-1) or larger (1) than the one looked for, or equal (0)
};

/// Like EncodeValue, but says when nothing in the column can equal the value.
[[nodiscard]] SoughtValue EncodeSought(const StoredColumn& column, const basic::Variant& value);

}  // namespace quardele::jet
