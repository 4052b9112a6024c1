// Arithmetic on the 128-bit magnitudes of Decimal columns.
#pragma once

#include <optional>

#include <basic/variant.h>

namespace quardele::jet {

/// A value as a decimal with this many digits behind the point, halves rounded away from zero; empty when
/// it has more than 28 digits or the value is no number. Texts are not read.
[[nodiscard]] std::optional<basic::Decimal> ToDecimal(const basic::Variant& value, std::uint8_t scale);

/// Number of decimal digits of the magnitude; 0 for zero.
[[nodiscard]] int DigitCount(const basic::Decimal& value);

[[nodiscard]] double DecimalNumber(const basic::Decimal& value);

}  // namespace quardele::jet
