#include "expressions/arithmetic.h"

#include <cmath>
#include <limits>
#include <optional>

#include <basic/conversion.h>
#include <basic/decimal_arithmetic.h>

#include "sql_error.h"

namespace quardele::sql {
namespace {

constexpr double kAmountUnit = 10000;

Variant Finite(double number) {
    if (!std::isfinite(number)) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return WithoutSignOfZero(number);
}

/// A Long where it fits.
Variant WholeResult(std::int64_t number) {
    if (number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max()) {
        return static_cast<double>(number);
    }
    return static_cast<std::int32_t>(number);
}

std::int64_t Exact(BinaryOperator op, std::int64_t left, std::int64_t right) {
    std::int64_t result = 0;
    bool overflow = false;
    if (op == BinaryOperator::Add) {
        overflow = __builtin_add_overflow(left, right, &result);
    } else if (op == BinaryOperator::Subtract) {
        overflow = __builtin_sub_overflow(left, right, &result);
    } else {
        overflow = __builtin_mul_overflow(left, right, &result);
    }
    if (overflow) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return result;
}

basic::Currency AmountOf(double number) {
    const double units = std::nearbyint(number * kAmountUnit);
    if (!(std::fabs(units) < 9.2e18)) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return {static_cast<std::int64_t>(units)};
}

/// Amounts with amounts or whole numbers, exactly; empty when another type takes part.
std::optional<Variant> AmountResult(BinaryOperator op, const Variant& left, const Variant& right) {
    const bool leftAmount = left.Is<basic::Currency>();
    const bool rightAmount = right.Is<basic::Currency>();
    const auto leftWhole = WholeOf(left);
    const auto rightWhole = WholeOf(right);
    if ((!leftAmount && !leftWhole) || (!rightAmount && !rightWhole)) {
        return std::nullopt;
    }
    const auto unitsOf = [](const Variant& value, const std::optional<std::int64_t>& whole) {
        return whole ? *whole * static_cast<std::int64_t>(kAmountUnit)
                     : value.As<basic::Currency>().tenThousandths;
    };
    if (op != BinaryOperator::Multiply) {
        return basic::Currency{Exact(op, unitsOf(left, leftWhole), unitsOf(right, rightWhole))};
    }
    if (leftAmount && rightAmount) {
        return AmountOf(basic::CDbl(left) * basic::CDbl(right));
    }
    return basic::Currency{leftAmount ? Exact(op, left.As<basic::Currency>().tenThousandths, *rightWhole)
                                      : Exact(op, *leftWhole, right.As<basic::Currency>().tenThousandths)};
}

/// Decimals with decimals and other exact numbers, exactly; empty when another type takes part.
std::optional<Variant> DecimalResult(BinaryOperator op, const Variant& left, const Variant& right) {
    if (!left.Is<basic::Decimal>() && !right.Is<basic::Decimal>()) {
        return std::nullopt;
    }
    const auto leftDecimal = basic::ExactDecimal(left);
    const auto rightDecimal = basic::ExactDecimal(right);
    if (!leftDecimal || !rightDecimal) {
        return std::nullopt;
    }
    switch (op) {
        case BinaryOperator::Add:
            return basic::Sum(*leftDecimal, *rightDecimal);
        case BinaryOperator::Subtract:
            return basic::Difference(*leftDecimal, *rightDecimal);
        default:
            return basic::Product(*leftDecimal, *rightDecimal);
    }
}

double Sum(BinaryOperator op, double left, double right) {
    switch (op) {
        case BinaryOperator::Add:
            return left + right;
        case BinaryOperator::Subtract:
            return left - right;
        default:
            return left * right;
    }
}

/// Adding, subtracting and multiplying, in the exactest type that holds both sides.
Variant SumOrProduct(BinaryOperator op, const Variant& left, const Variant& right) {
    const auto leftWhole = WholeOf(left);
    const auto rightWhole = WholeOf(right);
    if (leftWhole && rightWhole) {
        return WholeResult(Exact(op, *leftWhole, *rightWhole));
    }
    if (auto amount = AmountResult(op, left, right)) {
        return *amount;
    }
    if (auto decimal = DecimalResult(op, left, right)) {
        return *decimal;
    }
    const double result = Sum(op, basic::CDbl(left), basic::CDbl(right));
    const bool date = left.IsDate() || right.IsDate();
    const bool difference = op == BinaryOperator::Subtract && left.IsDate() && right.IsDate();
    if (date && !difference && op != BinaryOperator::Multiply) {
        return basic::Date{basic::CDbl(Finite(result))};
    }
    return Finite(result);
}

Variant Quotient(const Variant& left, const Variant& right) {
    const double divisor = basic::CDbl(right);
    if (divisor == 0) {
        throw basic::RuntimeError(error::kDivisionByZero);
    }
    return Finite(basic::CDbl(left) / divisor);
}

/// "\" and Mod round both sides to whole numbers first.
Variant WholeDivision(BinaryOperator op, const Variant& left, const Variant& right) {
    const std::int64_t dividend = basic::CLng(left);
    const std::int64_t divisor = basic::CLng(right);
    if (divisor == 0) {
        throw basic::RuntimeError(error::kDivisionByZero);
    }
    return WholeResult(op == BinaryOperator::Modulo ? dividend % divisor : dividend / divisor);
}

Variant Power(const Variant& left, const Variant& right) {
    const double result = std::pow(basic::CDbl(left), basic::CDbl(right));
    if (std::isnan(result)) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return Finite(result);
}

}  // namespace

std::optional<std::int64_t> WholeOf(const Variant& value) {
    if (value.Is<std::int32_t>()) {
        return value.As<std::int32_t>();
    }
    if (value.Is<std::int16_t>()) {
        return value.As<std::int16_t>();
    }
    if (value.Is<std::uint8_t>()) {
        return value.As<std::uint8_t>();
    }
    if (value.Is<bool>()) {
        return value.As<bool>() ? -1 : 0;
    }
    return std::nullopt;
}

Variant Calculate(BinaryOperator op, const Variant& left, const Variant& right) {
    if (left.IsNull() || right.IsNull()) {
        return basic::Null();
    }
    switch (op) {
        case BinaryOperator::Divide:
            return Quotient(left, right);
        case BinaryOperator::IntegerDivide:
        case BinaryOperator::Modulo:
            return WholeDivision(op, left, right);
        case BinaryOperator::Power:
            return Power(left, right);
        case BinaryOperator::Add:
            if (left.IsText() && right.IsText()) {
                return Concatenated(left, right);
            }
            [[fallthrough]];
        default:
            return SumOrProduct(op, left, right);
    }
}

Variant Negative(const Variant& value) {
    if (value.Is<basic::Decimal>()) {
        return basic::Negated(value.As<basic::Decimal>());
    }
    return Calculate(BinaryOperator::Subtract, std::int32_t{0}, value);
}

Variant Concatenated(const Variant& left, const Variant& right) {
    return basic::Joined(left) + basic::Joined(right);
}

}  // namespace quardele::sql
