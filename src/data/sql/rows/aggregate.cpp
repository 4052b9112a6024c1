#include "rows/aggregate.h"

#include <array>
#include <cmath>

#include <basic/conversion.h>

#include "expressions/compare.h"
#include "sql_error.h"

namespace quardele::sql {

namespace {

double NumberOrFail(const Variant& value) {
    const auto number = basic::NumberOf(value);
    if (!number) {
        throw basic::RuntimeError(error::kDataTypeMismatch);
    }
    return *number;
}

}  // namespace

std::optional<AggregateKind> AggregateOf(const Call& call) {
    constexpr std::array<TextView, 11> kNames = {u"Count", u"Sum",   u"Avg",    u"Min", u"Max", u"First",
                                                 u"Last",  u"StDev", u"StDevP", u"Var", u"VarP"};
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (basic::EqualNoCase(call.function, kNames[i])) {
            return static_cast<AggregateKind>(i);
        }
    }
    return std::nullopt;
}

StaticType AggregateType(AggregateKind kind, StaticType argument) {
    switch (kind) {
        case AggregateKind::Count:
            return jet::ColumnType::Long;
        case AggregateKind::Sum:
        case AggregateKind::Avg:
            return argument == jet::ColumnType::Currency || argument == jet::ColumnType::Numeric
                       ? argument
                       : jet::ColumnType::Double;
        case AggregateKind::StDev:
        case AggregateKind::StDevP:
        case AggregateKind::Var:
        case AggregateKind::VarP:
            return jet::ColumnType::Double;
        default:
            return argument;
    }
}

const Expression* FindAggregate(const Expression& expression) {
    if (const auto* call = expression.As<Call>(); call != nullptr && AggregateOf(*call)) {
        return &expression;
    }
    for (const Expression* part : PartsOf(expression)) {
        if (const Expression* found = FindAggregate(*part)) {
            return found;
        }
    }
    return nullptr;
}

void Accumulator::Add(const Variant& value) {
    if (kind_ == AggregateKind::Last || (kind_ == AggregateKind::First && count_ == 0)) {
        kept_ = value;
        ++count_;
        return;
    }
    if (value.IsNull() || kind_ == AggregateKind::First) {
        return;
    }
    ++count_;
    if (kind_ == AggregateKind::Sum || kind_ == AggregateKind::Avg) {
        sum_.Add(value);
    } else if (kind_ >= AggregateKind::StDev) {
        AddDeviation(value);
    } else if (kind_ != AggregateKind::Count) {
        Keep(value);
    }
}

/// Keeps the sum of squares about the mean so far, which loses no digits as a sum of squares would.
void Accumulator::AddDeviation(const Variant& value) {
    const double number = NumberOrFail(value);
    const double before = number - mean_;
    mean_ += before / count_;
    squares_ += before * (number - mean_);
}

void Accumulator::Keep(const Variant& value) {
    const auto order = CompareValues(value, kept_);
    if (!order || (kind_ == AggregateKind::Min ? *order < 0 : *order > 0)) {
        kept_ = value;
    }
}

Variant Accumulator::Result() const {
    switch (kind_) {
        case AggregateKind::Count:
            return count_;
        case AggregateKind::Sum:
            return count_ == 0 ? Variant(basic::Null()) : sum_.Total();
        case AggregateKind::Avg:
            return count_ == 0 ? Variant(basic::Null()) : sum_.Average(count_);
        case AggregateKind::StDev:
        case AggregateKind::StDevP:
        case AggregateKind::Var:
        case AggregateKind::VarP:
            return Spread();
        default:
            return kept_;
    }
}

/// Null for fewer values than the formula needs: two for a sample, one for all there are.
Variant Accumulator::Spread() const {
    const bool sample = kind_ == AggregateKind::StDev || kind_ == AggregateKind::Var;
    const int divisor = count_ - (sample ? 1 : 0);
    if (divisor <= 0) {
        return basic::Null();
    }
    const double variance = squares_ / divisor;
    const bool root = kind_ == AggregateKind::StDev || kind_ == AggregateKind::StDevP;
    return root ? std::sqrt(variance) : variance;
}

}  // namespace quardele::sql
