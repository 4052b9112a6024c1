// What a column accepts.
#pragma once

#include <optional>

#include <basic/variant.h>

#include "definitions/table_def.h"

namespace quardele::jet {

/// The stored bytes of a new value (of a long value its data), none for Null. Throws 3314, 3315, 3163 or
/// 3421 when the column refuses it.
[[nodiscard]] std::optional<ByteString> AcceptedValue(const Column& column, const StoredColumn& stored,
                                                      const basic::Variant& value);

}  // namespace quardele::jet
