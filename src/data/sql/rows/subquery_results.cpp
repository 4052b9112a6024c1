#include "rows/subquery_results.h"

#include "expressions/compare.h"
#include "rows/sort_key.h"

namespace quardele::sql {
namespace {

/// So many results of one subquery are remembered: each has different values of the row around it.
constexpr std::size_t kMostResults = 4096;

}  // namespace

void ValueSummary::Add(const Variant& value) {
    if (value.IsNull()) {
        hasNull_ = true;
        return;
    }
    std::string key;
    AppendSortKey(key, value);
    if (!keys_.Add(key)) {
        return;
    }
    if (!least_) {
        least_ = value;
        greatest_ = value;
    } else if (*CompareValues(value, *least_) < 0) {
        least_ = value;
    } else if (*CompareValues(value, *greatest_) > 0) {
        greatest_ = value;
    }
}

Truth ValueSummary::Compare(BinaryOperator op, bool all, const Variant& value) const {
    if (!least_ && !hasNull_) {
        return TruthOf(all);
    }
    if (value.IsNull()) {
        return Truth::Unknown;
    }
    if (op == BinaryOperator::Equal && !all) {
        return EqualsAny(value);
    }
    if (op == BinaryOperator::NotEqual && all) {
        return Not(EqualsAny(value));
    }
    return ComparesToEnds(op, all, value);
}

Truth ValueSummary::EqualsAny(const Variant& value) const {
    std::string key;
    AppendSortKey(key, value);
    const Truth found = TruthOf(keys_.Find(key).has_value());
    return hasNull_ ? Or(found, Truth::Unknown) : found;
}

/// Whatever lies between the least and the greatest value changes nothing for the other operators.
Truth ValueSummary::ComparesToEnds(BinaryOperator op, bool all, const Variant& value) const {
    Truth result = TruthOf(all);
    const auto take = [&result, all](Truth truth) { result = all ? And(result, truth) : Or(result, truth); };
    if (least_) {
        take(Outcome(op, CompareValues(value, *least_)));
        take(Outcome(op, CompareValues(value, *greatest_)));
    }
    if (hasNull_) {
        take(Truth::Unknown);
    }
    return result;
}

const SubqueryResult* SubqueryResults::Find(const SelectPlan& subquery, const std::string& parameters) const {
    const auto known = results_.find(&subquery);
    if (known == results_.end()) {
        return nullptr;
    }
    const auto result = known->second.find(parameters);
    return result == known->second.end() ? nullptr : result->second.get();
}

const SubqueryResult& SubqueryResults::Add(const SelectPlan& subquery, const std::string& parameters,
                                           SubqueryResult result) {
    OfSubquery& known = results_[&subquery];
    if (known.size() >= kMostResults) {
        known.clear();
    }
    auto& place = known[parameters];
    place = std::make_unique<const SubqueryResult>(std::move(result));
    return *place;
}

}  // namespace quardele::sql
