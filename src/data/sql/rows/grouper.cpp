#include "rows/grouper.h"

#include <algorithm>

#include "rows/row_sorter.h"
#include "sql_error.h"

namespace quardele::sql {

Grouper::Grouper(const GroupPlan& plan) : plan_(plan) {
    if (plan_.keys.empty()) {
        // Without GROUP BY there is one group, even of no rows.
        keys_.AddNone();
        for (const AggregateStep& step : plan_.aggregates) {
            accumulators_.emplace_back(step.kind);
        }
    }
}

void Grouper::Add(RowContext& row) {
    const std::size_t first = GroupOf(row) * plan_.aggregates.size();
    for (std::size_t i = 0; i < plan_.aggregates.size(); ++i) {
        Accumulator& accumulator = accumulators_[first + i];
        if (plan_.aggregates[i].argument) {
            AddValue(plan_.aggregates[i], row, accumulator);
        } else {
            accumulator.AddRow();
        }
    }
}

void Grouper::AddValue(const AggregateStep& step, RowContext& row, Accumulator& accumulator) {
    Variant scratch;
    const Variant& value = step.argument->Peek(row, scratch);
    try {
        accumulator.Add(value);
    } catch (const basic::RuntimeError& failure) {
        FailIn(failure, step.text);
    }
}

std::uint32_t Grouper::GroupOf(RowContext& row) {
    if (plan_.keys.empty()) {
        return 0;
    }
    const std::uint32_t before = keys_.Size();
    const std::uint32_t group = keys_.NumberOf(plan_.keys, row);
    if (keys_.Size() == before) {
        return group;
    }
    for (const NodePtr& node : plan_.keys) {
        keyValues_.push_back(node->Value(row));
    }
    for (const AggregateStep& step : plan_.aggregates) {
        accumulators_.emplace_back(step.kind);
    }
    return group;
}

void Grouper::Finish(RowContext& row, const Emit& emit) {
    RowSorter sorter;
    for (std::uint32_t group = 0; group < keys_.Size(); ++group) {
        sorter.Add(keys_.KeyOf(group));
    }
    const std::size_t keyCount = plan_.keys.size();
    const std::size_t aggregateCount = plan_.aggregates.size();
    std::vector<Variant> result(keyCount + aggregateCount);
    row.SetResults(result);
    for (const std::uint32_t group : sorter.Order()) {
        for (std::size_t i = 0; i < keyCount; ++i) {
            result[i] = std::move(keyValues_[group * keyCount + i]);
        }
        for (std::size_t i = 0; i < aggregateCount; ++i) {
            result[keyCount + i] = accumulators_[group * aggregateCount + i].Result();
        }
        const bool wanted = !plan_.having || plan_.having->Test(row) == Truth::True;
        if (wanted && !emit()) {
            return;
        }
    }
}

}  // namespace quardele::sql
