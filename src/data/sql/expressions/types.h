// What is known about the type of an expression before any row is read.
#pragma once

#include <optional>

#include <basic/variant.h>
#include <jet/types.h>

#include "syntax/ast.h"

namespace quardele::sql {

/// Empty: any type, told by each value alone (Null, or parts that disagree).
using StaticType = std::optional<jet::ColumnType>;

/// Types that compare with each other.
enum class TypeClass { Unknown, Numbers, Texts, Bytes, Guids };

[[nodiscard]] TypeClass ClassOf(StaticType type);
/// Throws 3464 when values of the two types never compare.
void RequireComparable(StaticType left, StaticType right);
/// Throws 3464 when values of the type are never conditions.
void RequireCondition(StaticType type);
/// The column type that holds a value; empty for Null.
[[nodiscard]] StaticType TypeOf(const Variant& value);
/// The type of a value that comes from either of two expressions.
[[nodiscard]] StaticType CommonType(StaticType left, StaticType right);
/// The type of Calculate's results.
[[nodiscard]] StaticType ArithmeticType(BinaryOperator op, StaticType left, StaticType right);

}  // namespace quardele::sql
