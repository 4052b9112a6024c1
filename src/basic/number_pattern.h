// Numbers written after a section of a pattern.
#pragma once

#include "number_digits.h"
#include "pattern.h"

namespace quardele::basic {

/// What stands for digits.
inline constexpr TextView kDigitSigns = u"0#";

/// The number in the places of the section; see FormatValue. With `sign` a "-" stands ahead unless only zeros
/// show.
[[nodiscard]] Text WriteNumber(NumberDigits number, bool sign, const PatternUnits& section);

}  // namespace quardele::basic
