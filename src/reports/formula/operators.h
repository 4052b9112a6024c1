// What the operators of formulas do with values.
#pragma once

#include <formula/formula.h>

namespace quardele::formula {

using BinaryOperator = Variant (*)(const Variant& left, const Variant& right);

// Null on either side gives Null, but for Join, where it is the empty text.

/// Two texts are joined (throws 6 when they are too long), a number moves a date by days; else numbers.
[[nodiscard]] Variant Add(const Variant& left, const Variant& right);
/// Two dates give the days between them.
[[nodiscard]] Variant Subtract(const Variant& left, const Variant& right);
[[nodiscard]] Variant Multiply(const Variant& left, const Variant& right);
/// Throws 11.
[[nodiscard]] Variant Divide(const Variant& left, const Variant& right);
/// The ordinary texts of both, one behind the other. Throws 6 when they are too long.
[[nodiscard]] Variant Join(const Variant& left, const Variant& right);
[[nodiscard]] Variant Negate(const Variant& value);
/// Whether values that Compare so many above or below each other meet the comparison.
[[nodiscard]] bool Holds(Comparison comparison, int order);

/// Longer texts are refused, so that no formula fills the memory: UTF-16 units.
inline constexpr std::size_t kLongestText = 1 << 20;
/// A text, or the error 6 when it is longer than that.
[[nodiscard]] Variant NotTooLong(Text text);

/// A number; throws 13 for what is none.
[[nodiscard]] double NumberIn(const Variant& value);
/// A double, or the error 6 when there is none such.
[[nodiscard]] Variant Finite(double number);

}  // namespace quardele::formula
