#include "operators.h"

#include <cmath>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/runtime_error.h>

namespace quardele::formula {
namespace {

namespace error = basic::error;
using basic::Date;
using basic::RuntimeError;

bool AnyNull(const Variant& left, const Variant& right) {
    return left.IsNull() || right.IsNull();
}

Variant Moved(Date date, double days) {
    const Date moved{date.days + days};
    static_cast<void>(basic::CivilOf(moved));
    return moved;
}

template <class T>
int Order(const T& left, const T& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

}  // namespace

Variant NotTooLong(Text text) {
    if (text.size() > kLongestText) {
        throw RuntimeError(error::kOverflow);
    }
    return text;
}

double NumberIn(const Variant& value) {
    if (!value.IsNumber()) {
        throw RuntimeError(error::kTypeMismatch);
    }
    return basic::CDbl(value);
}

Variant Finite(double number) {
    if (!std::isfinite(number)) {
        throw RuntimeError(error::kOverflow);
    }
    return number;
}

Variant Add(const Variant& left, const Variant& right) {
    if (AnyNull(left, right)) {
        return basic::Null();
    }
    if (left.IsText() && right.IsText()) {
        return NotTooLong(left.As<Text>() + right.As<Text>());
    }
    if (left.IsDate()) {
        return Moved(left.As<Date>(), NumberIn(right));
    }
    if (right.IsDate()) {
        return Moved(right.As<Date>(), NumberIn(left));
    }
    return Finite(NumberIn(left) + NumberIn(right));
}

Variant Subtract(const Variant& left, const Variant& right) {
    if (AnyNull(left, right)) {
        return basic::Null();
    }
    if (left.IsDate() && right.IsDate()) {
        return left.As<Date>().days - right.As<Date>().days;
    }
    if (left.IsDate()) {
        return Moved(left.As<Date>(), -NumberIn(right));
    }
    return Finite(NumberIn(left) - NumberIn(right));
}

Variant Multiply(const Variant& left, const Variant& right) {
    if (AnyNull(left, right)) {
        return basic::Null();
    }
    return Finite(NumberIn(left) * NumberIn(right));
}

Variant Divide(const Variant& left, const Variant& right) {
    if (AnyNull(left, right)) {
        return basic::Null();
    }
    const double divisor = NumberIn(right);
    if (divisor == 0) {
        throw RuntimeError(error::kDivisionByZero);
    }
    return Finite(NumberIn(left) / divisor);
}

Variant Join(const Variant& left, const Variant& right) {
    return NotTooLong(basic::Joined(left) + basic::Joined(right));
}

Variant Negate(const Variant& value) {
    return value.IsNull() ? value : Variant(-NumberIn(value));
}

bool Holds(Comparison comparison, int order) {
    switch (comparison) {
        case Comparison::Equal:
            return order == 0;
        case Comparison::NotEqual:
            return order != 0;
        case Comparison::Less:
            return order < 0;
        case Comparison::LessOrEqual:
            return order <= 0;
        case Comparison::Greater:
            return order > 0;
        case Comparison::GreaterOrEqual:
            return order >= 0;
    }
    return false;
}

int Compare(const Variant& left, const Variant& right) {
    if (left.IsText() && right.IsText()) {
        return Order(basic::UCase(left.As<Text>()), basic::UCase(right.As<Text>()));
    }
    if (left.IsDate() && right.IsDate()) {
        return Order(left.As<Date>(), right.As<Date>());
    }
    return Order(NumberIn(left), NumberIn(right));
}

bool IsTrue(const Variant& value) {
    return !value.IsNull() && !value.IsEmpty() && NumberIn(value) != 0;
}

}  // namespace quardele::formula
