// Comparison of values as the database does it.
#pragma once

#include <compare>
#include <optional>

#include <basic/variant.h>

#include "expressions/truth.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// Numbers, dates and truth values (-1/0) compare with each other as numbers, texts in the file's collation,
/// binary data and GUIDs byte by byte. Empty when one side is Null. Throws 3464 for other pairs.
[[nodiscard]] std::optional<std::weak_ordering> CompareValues(const Variant& left, const Variant& right);

/// What a comparison operator makes of an order; Unknown of none.
[[nodiscard]] Truth Outcome(BinaryOperator comparison, std::optional<std::weak_ordering> order);
[[nodiscard]] Truth Outcome(BinaryOperator comparison, double left, double right);

/// A value as a condition: Null is Unknown, numbers are true when not 0. Throws 3464 for texts and others.
[[nodiscard]] Truth TruthOfValue(const Variant& value);
/// Null for Unknown.
[[nodiscard]] Variant ValueOfTruth(Truth truth);

}  // namespace quardele::sql
