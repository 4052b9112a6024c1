// The operators that calculate.
#pragma once

#include <cstdint>
#include <optional>

#include <basic/variant.h>

#include "syntax/ast.h"

namespace quardele::sql {

/// The number; zero never has a sign that would show.
[[nodiscard]] constexpr double WithoutSignOfZero(double number) {
    return number + 0.0;
}

/// The value as a whole number when its type is one of those; truth values are -1 and 0.
[[nodiscard]] std::optional<std::int64_t> WholeOf(const Variant& value);

/// + - * / \ Mod ^ on two values. Null spreads. Whole numbers give a Long, or a Double beyond its range;
/// amounts stay amounts; a date and a number give a date; "+" joins two texts; a text beside a number is
/// read as a number. Throws 11 for a division by zero, 6 for an overflow, 13 for what is no number.
[[nodiscard]] Variant Calculate(BinaryOperator op, const Variant& left, const Variant& right);
/// The value with its sign turned.
[[nodiscard]] Variant Negative(const Variant& value);
/// "&": Null counts as the empty text.
[[nodiscard]] Variant Concatenated(const Variant& left, const Variant& right);

}  // namespace quardele::sql
