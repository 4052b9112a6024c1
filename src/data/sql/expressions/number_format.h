// Format() of statements: date patterns as the runtime's, and the common number patterns.
#pragma once

#include <basic/variant.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;
using basic::Variant;

/// A pattern with "0" or "#" is one for numbers: "0" a digit always shown, "#" a digit shown when it counts,
/// "." the decimal point, "," thousands apart, "%" per cent; anything else stands as it is. Texts that are no
/// numbers stay as they are. Other patterns are dates' (basic::Format). Null gives the empty text.
[[nodiscard]] Text FormatValue(const Variant& value, TextView pattern);

}  // namespace quardele::sql
