// Calculating with decimals: exact within 28 digits, halves of a digit beyond them rounded to even.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>

#include <basic/variant.h>

namespace quardele::basic {

// Each throws RuntimeError 6 for a result with more than 28 digits before the point.

[[nodiscard]] Decimal Sum(const Decimal& left, const Decimal& right);
[[nodiscard]] Decimal Difference(const Decimal& left, const Decimal& right);
[[nodiscard]] Decimal Product(const Decimal& left, const Decimal& right);
/// Divided by a whole number above 0, to as many digits as there is room for.
[[nodiscard]] Decimal Quotient(const Decimal& dividend, std::uint32_t divisor);

/// The same number whatever the scales.
[[nodiscard]] std::strong_ordering Compare(const Decimal& left, const Decimal& right);

/// Zero has no sign.
[[nodiscard]] Decimal Negated(const Decimal& value);

/// The magnitude in units of 10^-28, the most significant byte first: magnitudes in their order, whatever the
/// scales.
[[nodiscard]] std::array<std::uint8_t, 32> UnitBytes(const Decimal& value);

/// A number whose type is exact (whole numbers, truth values, amounts, decimals) as a decimal; empty for
/// other values.
[[nodiscard]] std::optional<Decimal> ExactDecimal(const Variant& value);

/// The decimal that a double is written as: its shortest digits; empty beyond the 28 digits of decimals.
[[nodiscard]] std::optional<Decimal> ShortestDecimal(double value);

}  // namespace quardele::basic
