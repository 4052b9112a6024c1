// Decimals from written digits.
#pragma once

#include <optional>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::basic {

/// The exact value of [sign] digits [point digits], blanks around it left aside; the point is `point` or '.'.
/// Empty for other texts, for more than 28 digits (zeros in front do not count) and for more than 28
/// decimals.
[[nodiscard]] std::optional<Decimal> ReadDecimal(TextView text, char16_t point = u'.');

}  // namespace quardele::basic
