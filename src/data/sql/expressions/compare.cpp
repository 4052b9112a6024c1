#include "expressions/compare.h"

#include <basic/conversion.h>
#include <basic/decimal_arithmetic.h>
#include <jet/collation.h>

#include "sql_error.h"

namespace quardele::sql {
namespace {

std::weak_ordering OrderOf(double left, double right) {
    if (left < right) {
        return std::weak_ordering::less;
    }
    return left > right ? std::weak_ordering::greater : std::weak_ordering::equivalent;
}

/// A decimal counts to its last digit; a double beside it stands for the digits that it is written with.
std::optional<basic::Decimal> DecimalOf(const Variant& value) {
    if (value.Is<double>() || value.Is<float>()) {
        return basic::ShortestDecimal(*basic::NumberOf(value));
    }
    return basic::ExactDecimal(value);
}

std::optional<std::weak_ordering> CompareDecimals(const Variant& left, const Variant& right) {
    if (!left.Is<basic::Decimal>() && !right.Is<basic::Decimal>()) {
        return std::nullopt;
    }
    const auto leftDecimal = DecimalOf(left);
    const auto rightDecimal = DecimalOf(right);
    if (!leftDecimal || !rightDecimal) {
        return std::nullopt;
    }
    return basic::Compare(*leftDecimal, *rightDecimal);
}

}  // namespace

std::optional<std::weak_ordering> CompareValues(const Variant& left, const Variant& right) {
    if (left.IsNull() || right.IsNull()) {
        return std::nullopt;
    }
    if (left.IsText() && right.IsText()) {
        return jet::Compare(left.As<Text>(), right.As<Text>());
    }
    if (left.Is<basic::Currency>() && right.Is<basic::Currency>()) {
        return left.As<basic::Currency>() <=> right.As<basic::Currency>();
    }
    if (const auto order = CompareDecimals(left, right)) {
        return order;
    }
    if (const auto leftNumber = basic::NumberOf(left)) {
        if (const auto rightNumber = basic::NumberOf(right)) {
            return OrderOf(*leftNumber, *rightNumber);
        }
    }
    if (left.Is<basic::Binary>() && right.Is<basic::Binary>()) {
        return left.As<basic::Binary>() <=> right.As<basic::Binary>();
    }
    if (left.Is<basic::Guid>() && right.Is<basic::Guid>()) {
        return left.As<basic::Guid>().bytes <=> right.As<basic::Guid>().bytes;
    }
    throw basic::RuntimeError(error::kDataTypeMismatch);
}

Truth Outcome(BinaryOperator comparison, std::optional<std::weak_ordering> order) {
    if (!order) {
        return Truth::Unknown;
    }
    switch (comparison) {
        case BinaryOperator::Equal:
            return TruthOf(*order == 0);
        case BinaryOperator::NotEqual:
            return TruthOf(*order != 0);
        case BinaryOperator::Less:
            return TruthOf(*order < 0);
        case BinaryOperator::LessOrEqual:
            return TruthOf(*order <= 0);
        case BinaryOperator::Greater:
            return TruthOf(*order > 0);
        default:
            return TruthOf(*order >= 0);
    }
}

Truth Outcome(BinaryOperator comparison, double left, double right) {
    switch (comparison) {
        case BinaryOperator::Equal:
            return TruthOf(!(left < right) && !(left > right));
        case BinaryOperator::NotEqual:
            return TruthOf(left < right || left > right);
        case BinaryOperator::Less:
            return TruthOf(left < right);
        case BinaryOperator::LessOrEqual:
            return TruthOf(!(left > right));
        case BinaryOperator::Greater:
            return TruthOf(left > right);
        default:
            return TruthOf(!(left < right));
    }
}

Truth TruthOfValue(const Variant& value) {
    if (value.IsNull()) {
        return Truth::Unknown;
    }
    if (value.Is<bool>()) {
        return TruthOf(value.As<bool>());
    }
    if (const auto number = basic::NumberOf(value)) {
        return TruthOf(*number != 0);
    }
    throw basic::RuntimeError(error::kDataTypeMismatch);
}

Variant ValueOfTruth(Truth truth) {
    return truth == Truth::Unknown ? Variant(basic::Null()) : Variant(truth == Truth::True);
}

}  // namespace quardele::sql
