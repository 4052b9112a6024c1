#include "rows/aggregate.h"

#include <array>

#include <basic/conversion.h>

#include "expressions/compare.h"
#include "sql_error.h"

namespace quardele::sql {

std::optional<AggregateKind> AggregateOf(const Call& call) {
    constexpr std::array<TextView, 7> kNames = {u"Count", u"Sum", u"Avg", u"Min", u"Max", u"First", u"Last"};
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
            return argument == jet::ColumnType::Currency ? argument : jet::ColumnType::Double;
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
        AddNumber(value);
    } else if (kind_ != AggregateKind::Count) {
        Keep(value);
    }
}

void Accumulator::AddNumber(const Variant& value) {
    if (value.Is<basic::Currency>()) {
        amounts_ = true;
        if (__builtin_add_overflow(amount_, value.As<basic::Currency>().tenThousandths, &amount_)) {
            throw basic::RuntimeError(error::kOverflow);
        }
        return;
    }
    const auto number = basic::NumberOf(value);
    if (!number) {
        throw basic::RuntimeError(error::kDataTypeMismatch);
    }
    sum_ += *number;
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
        case AggregateKind::Avg:
            break;
        default:
            return kept_;
    }
    if (count_ == 0) {
        return basic::Null();
    }
    const double divisor = kind_ == AggregateKind::Avg ? count_ : 1;
    if (!amounts_) {
        return sum_ / divisor;
    }
    return divisor == 1 ? Variant(basic::Currency{amount_})
                        : Variant(basic::CCur(static_cast<double>(amount_) / 10000 / divisor));
}

}  // namespace quardele::sql
