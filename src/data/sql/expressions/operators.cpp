#include "expressions/operators.h"

#include <algorithm>
#include <iterator>

namespace quardele::sql {
namespace {

constexpr OperatorSpelling kOperators[] = {
    {u"=", kComparison, BinaryOperator::Equal, false},
    {u"<>", kComparison, BinaryOperator::NotEqual, false},
    {u"<", kComparison, BinaryOperator::Less, false},
    {u"<=", kComparison, BinaryOperator::LessOrEqual, false},
    {u">", kComparison, BinaryOperator::Greater, false},
    {u">=", kComparison, BinaryOperator::GreaterOrEqual, false},
    {u"&", kConcatenation, BinaryOperator::Concatenate, false},
    {u"+", kSum, BinaryOperator::Add, false},
    {u"-", kSum, BinaryOperator::Subtract, false},
    {u"\\", kIntegerDivision, BinaryOperator::IntegerDivide, false},
    {u"*", kProduct, BinaryOperator::Multiply, false},
    {u"/", kProduct, BinaryOperator::Divide, false},
    {u"^", kPower, BinaryOperator::Power, false},
    {u"Like", kComparison, BinaryOperator::Like, true},
    {u"ALike", kComparison, BinaryOperator::ALike, true},
    {u"Mod", kModulo, BinaryOperator::Modulo, true},
    {u"Xor", kXor, BinaryOperator::Xor, true},
    {u"Eqv", kEqv, BinaryOperator::Eqv, true},
    {u"Imp", kImp, BinaryOperator::Imp, true},
};

struct PrecedenceVisitor {
    /// A number below zero, which only digits of another base can write at once, is written with its sign.
    Precedence operator()(const Literal& node) const {
        const auto* number = std::get_if<std::int32_t>(&node.value.Stored());
        return number != nullptr && *number < 0 ? kSign : kOperand;
    }
    Precedence operator()(const Unary& node) const { return node.op == UnaryOperator::Not ? kNot : kSign; }
    Precedence operator()(const Binary& node) const { return SpellingOf(node.op).precedence; }
    Precedence operator()(const Junction& node) const { return node.isAnd ? kAnd : kOr; }
    Precedence operator()(const Between&) const { return kComparison; }
    Precedence operator()(const InList&) const { return kComparison; }
    Precedence operator()(const IsNull&) const { return kComparison; }
    Precedence operator()(const Subquery& node) const { return node.operand ? kComparison : kOperand; }
    template <class T>
    Precedence operator()(const T&) const {
        return kOperand;
    }
};

}  // namespace

std::span<const OperatorSpelling> BinaryOperators() {
    return kOperators;
}

const OperatorSpelling& SpellingOf(BinaryOperator op) {
    return *std::find_if(std::begin(kOperators), std::end(kOperators),
                         [op](const OperatorSpelling& spelling) { return spelling.op == op; });
}

Precedence PrecedenceOf(const Expression& expression) {
    return std::visit(PrecedenceVisitor(), expression.node);
}

bool IsComparison(BinaryOperator op) {
    return op >= BinaryOperator::Equal && op <= BinaryOperator::GreaterOrEqual;
}

}  // namespace quardele::sql
