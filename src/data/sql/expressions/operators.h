// How operators are written and how tightly they bind.
#pragma once

#include <span>

#include "syntax/ast.h"

namespace quardele::sql {

/// From the loosest binding to the tightest.
enum Precedence {
    kImp = 1,
    kEqv,
    kXor,
    kOr,
    kAnd,
    kNot,
    kComparison,
    kConcatenation,
    kSum,
    kModulo,
    kIntegerDivision,
    kProduct,
    kSign,
    kPower,
    kOperand,
};

struct OperatorSpelling {
    TextView text;
    Precedence precedence;
    BinaryOperator op;
    bool word;  ///< written with letters
};

/// All binary operators but AND and OR, which make junctions.
[[nodiscard]] std::span<const OperatorSpelling> BinaryOperators();
[[nodiscard]] const OperatorSpelling& SpellingOf(BinaryOperator op);
[[nodiscard]] Precedence PrecedenceOf(const Expression& expression);
/// =, <>, <, <=, >, >=.
[[nodiscard]] bool IsComparison(BinaryOperator op);

}  // namespace quardele::sql
