#include "rows/number_sum.h"

#include <cmath>

#include <basic/conversion.h>
#include <basic/decimal_arithmetic.h>

#include "expressions/arithmetic.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

constexpr std::int64_t kAmountUnit = 10000;

double Finite(double number) {
    if (!std::isfinite(number)) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return number;
}

basic::Decimal DecimalOf(std::int64_t whole) {
    const auto bits = static_cast<std::uint64_t>(whole);
    const std::uint64_t magnitude = whole < 0 ? 0 - bits : bits;
    return {whole < 0,
            0,
            {0, 0, static_cast<std::uint32_t>(magnitude >> 32), static_cast<std::uint32_t>(magnitude)}};
}

}  // namespace

void NumberSum::Add(const Variant& value) {
    if (const auto whole = WholeOf(value)) {
        whole_ += *whole;
    } else if (value.Is<basic::Currency>()) {
        amounts_ = true;
        if (__builtin_add_overflow(amount_, value.As<basic::Currency>().tenThousandths, &amount_)) {
            throw basic::RuntimeError(error::kOverflow);
        }
    } else if (value.Is<basic::Decimal>()) {
        decimals_ = basic::Sum(decimals_.value_or(basic::Decimal{}), value.As<basic::Decimal>());
    } else if (const auto number = basic::NumberOf(value)) {
        inexact_ = true;
        numbers_ += *number;
    } else {
        throw basic::RuntimeError(error::kDataTypeMismatch);
    }
}

Variant NumberSum::Total() const {
    if (IsDecimal()) {
        return DecimalTotal();
    }
    return IsAmount() ? Variant(basic::Currency{AmountTotal()}) : Variant(DoubleTotal());
}

Variant NumberSum::Average(std::int32_t count) const {
    if (IsDecimal()) {
        return basic::Quotient(DecimalTotal(), static_cast<std::uint32_t>(count));
    }
    const double average =
        (IsAmount() ? static_cast<double>(AmountTotal()) / kAmountUnit : DoubleTotal()) / count;
    return IsAmount() ? Variant(basic::CCur(average)) : Variant(average);
}

basic::Decimal NumberSum::DecimalTotal() const {
    const auto amount = basic::ExactDecimal(basic::Currency{amount_});
    return basic::Sum(basic::Sum(*decimals_, *amount), DecimalOf(whole_));
}

std::int64_t NumberSum::AmountTotal() const {
    std::int64_t total = 0;
    if (__builtin_mul_overflow(whole_, kAmountUnit, &total) ||
        __builtin_add_overflow(total, amount_, &total)) {
        throw basic::RuntimeError(error::kOverflow);
    }
    return total;
}

double NumberSum::DoubleTotal() const {
    const double exact = static_cast<double>(whole_) + static_cast<double>(amount_) / kAmountUnit;
    return Finite(numbers_ + exact + (decimals_ ? basic::CDbl(*decimals_) : 0));
}

}  // namespace quardele::sql
