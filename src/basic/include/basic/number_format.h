// Values written after a pattern, as Format() of statements does: patterns of dates and the common ones of
// numbers.
#pragma once

#include <basic/variant.h>

namespace quardele::basic {

/// A pattern with "0" or "#" is one for numbers: "0" a digit always shown, "#" a digit shown when it counts,
/// "." the decimal point, "," thousands apart, "%" per cent; anything else stands as it is. Texts that are no
/// numbers stay as they are. Other patterns are dates' (Format). Null gives the empty text.
[[nodiscard]] Text FormatValue(const Variant& value, TextView pattern);

}  // namespace quardele::basic
