// The texts of numbers, with the locale's decimal separator. See NumberText in conversion.h for doubles.
#pragma once

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::basic {

/// 7 significant digits at most.
[[nodiscard]] Text SingleText(float value);
/// The decimals that the amount has, four at most.
[[nodiscard]] Text CurrencyText(Currency value);
/// All digits, zeros at the end of the decimals left out.
[[nodiscard]] Text DecimalText(const Decimal& value);

/// The nearest double of a decimal number.
[[nodiscard]] double DecimalValue(const Decimal& value);

}  // namespace quardele::basic
